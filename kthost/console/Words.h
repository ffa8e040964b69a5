#pragma once

#include <KtGe.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace kthost {

/// The words behind a command's name, taken one after the other. What is missing or not what is asked for
/// throws UsageError.
class Words {
public:
    explicit Words(std::vector<std::wstring> words) : words_(std::move(words)) {}

    bool atEnd() const { return next_ == words_.size(); }

    /// `what` is what the user is told is missing.
    const std::wstring& take(const char* what);
    /// Takes the next word if it is that one.
    bool takeIf(std::wstring_view word);
    /// The next word has to be that one.
    void expect(std::wstring_view word);
    /// Nothing may be left.
    void expectEnd() const;

    /// X,Y with two finite numbers.
    KtGePoint3d takePoint();
    /// A path as it is written. The empty one leads nowhere.
    std::filesystem::path takePath(const char* what);
    /// The same from the root on, so that it stays when the current folder becomes another. CommandError
    /// where there is no current folder.
    std::filesystem::path takeWholePath(const char* what);
    /// A whole number from `least` to `most`.
    std::uint32_t takeNumber(const char* what, std::uint32_t least, std::uint32_t most);

    const std::vector<std::wstring>& all() const { return words_; }

private:
    std::vector<std::wstring> words_;
    std::size_t next_ = 0;
};

} // namespace kthost
