#include "TestModule.h"

TEST_MODULE_EXPORT int testResourceAnswer() {
    return 7;
}
