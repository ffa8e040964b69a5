#include "tests/histories/Questions.h"

#include "kthost/database/DatabaseQueries.h"

namespace histories {

namespace {

constexpr std::size_t kQuestions = 3;

} // namespace

std::vector<ktmodel::GraphQuestion> Questions::about(const kthost::Document& document) {
    std::vector<KtDbObjectId> all = kthost::records(*document.database(), true);
    const std::vector<KtDbObjectId> blocks = kthost::records(*document.database(), false);
    all.insert(all.end(), blocks.begin(), blocks.end());
    std::vector<ktmodel::GraphQuestion> questions(kQuestions);
    for (ktmodel::GraphQuestion& question : questions) {
        question = {all[random_() % all.size()], all[random_() % all.size()]};
    }
    return questions;
}

} // namespace histories
