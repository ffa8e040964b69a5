#include "TestModule.h"

TEST_MODULE_VERSION(KtRx::kApiVersion)
