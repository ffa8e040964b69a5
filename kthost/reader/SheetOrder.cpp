#include "kthost/reader/SheetOrder.h"

#include "kthost/reader/SheetError.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace kthost {

namespace {

// A depth-first walk with a stack of its own: the files decide how deep it goes.
class OrderSearch {
public:
    explicit OrderSearch(const Design& design) : design_(design), states_(design.files.size()) {}

    std::vector<std::size_t> run();

private:
    struct Step {
        std::size_t file;
        std::size_t nextSheet;
    };
    enum class State : std::uint8_t { Untouched, Underway, Done };

    void enter(std::size_t file);
    void advance();
    void leave(std::size_t file);

    const Design& design_;
    std::vector<State> states_;
    std::vector<Step> steps_;
    std::vector<std::size_t> finished_;
};

std::vector<std::size_t> OrderSearch::run() {
    enter(0);
    while (!steps_.empty()) {
        advance();
    }
    std::reverse(finished_.begin(), finished_.end());
    return std::move(finished_);
}

void OrderSearch::enter(std::size_t file) {
    states_[file] = State::Underway;
    steps_.push_back({file, 0});
}

void OrderSearch::leave(std::size_t file) {
    states_[file] = State::Done;
    finished_.push_back(file);
    steps_.pop_back();
}

void OrderSearch::advance() {
    const std::size_t index = steps_.back().file;
    const SheetFile& file = design_.files[index];
    const std::size_t sheet = steps_.back().nextSheet++;
    if (sheet == file.children.size()) {
        leave(index);
        return;
    }
    const std::size_t child = file.children[sheet];
    if (states_[child] == State::Underway) {
        failAtSheet(file, sheet, "a sheet file that does not contain the sheet that names it");
    }
    if (states_[child] == State::Untouched) {
        enter(child);
    }
}

} // namespace

std::vector<std::size_t> sheetOrder(const Design& design) {
    return OrderSearch(design).run();
}

} // namespace kthost
