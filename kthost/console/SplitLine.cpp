#include "kthost/console/SplitLine.h"

#include "kthost/console/CommandError.h"
#include "kthost/runtime/Utf8.h"

#include <cstddef>

namespace kthost {

namespace {

bool isBlank(char byte) {
    return byte == ' ' || byte == '\t';
}

class LineSplitter {
public:
    explicit LineSplitter(std::string_view line) : rest_(line) {}

    std::vector<std::wstring> split() {
        std::vector<std::wstring> words;
        for (skipBlanks(); !rest_.empty() && rest_.front() != '#'; skipBlanks()) {
            words.push_back(toWide(takeWord()));
        }
        return words;
    }

private:
    void skipBlanks() {
        while (!rest_.empty() && isBlank(rest_.front())) {
            rest_.remove_prefix(1);
        }
    }

    char take() {
        const char byte = rest_.front();
        rest_.remove_prefix(1);
        return byte;
    }

    std::string takeWord() {
        std::string word;
        while (!rest_.empty() && !isBlank(rest_.front())) {
            const char byte = take();
            if (byte == '"') {
                takeQuoted(word);
            } else {
                word += byte;
            }
        }
        return word;
    }

    void takeQuoted(std::string& word) {
        while (!rest_.empty()) {
            const char byte = take();
            if (byte != '"') {
                word += byte;
            } else if (!rest_.empty() && rest_.front() == '"') {
                word += take();
            } else {
                return;
            }
        }
        throw CommandError("a double quote is not closed");
    }

    std::string_view rest_;
};

} // namespace

std::vector<std::wstring> splitLine(std::string_view line) {
    if (line.ends_with('\r')) {
        line.remove_suffix(1);
    }
    if (findMalformedUtf8(line) != std::string_view::npos) {
        throw CommandError("the line is not UTF-8 text");
    }
    return LineSplitter(line).split();
}

} // namespace kthost
