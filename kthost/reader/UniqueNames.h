#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <unordered_set>

namespace kthost {

/// Hands out names, none of them twice. Who comes second for a name gets it with " (2)" behind it, and so on.
class UniqueNames {
public:
    /// Whether names that differ in the case of ASCII letters only are the same.
    enum class Case : std::uint8_t { matters, ignored };

    explicit UniqueNames(Case sense) noexcept : sense_(sense) {}

    std::wstring take(const std::wstring& wanted);

private:
    std::wstring key(std::wstring name) const;

    Case sense_;
    std::unordered_set<std::wstring> taken_;
    std::unordered_map<std::wstring, std::size_t> latest_; // so that many equal names take no quadratic time
};

/// The text as the name of a block table record: those hold no "|" and begin with no "*".
std::wstring recordNameText(const std::wstring& text);

} // namespace kthost
