#include <SystemPath.h>
#include <WindowSystem.h>

#include <system_error>

namespace {

constexpr std::size_t kMostPlain = MAX_PATH - 12; // folders are to leave room for a short file name
constexpr const wchar_t* kVerbatim = L"\\\\?\\";
constexpr const wchar_t* kVerbatimShare = L"\\\\?\\UNC";

} // namespace

std::filesystem::path systemPath(const std::filesystem::path& path) {
    std::error_code error;
    const std::filesystem::path whole = std::filesystem::absolute(path, error);
    const std::wstring& text = whole.native();
    if (error || text.size() < kMostPlain || text.starts_with(kVerbatim)) {
        return path;
    }
    // A verbatim path is taken as it stands, so it has no slashes, dots or relative parts.
    std::wstring exact = whole.lexically_normal().make_preferred().native();
    const bool isShare = exact.starts_with(L"\\\\");
    return isShare ? kVerbatimShare + exact.substr(1) : kVerbatim + exact;
}
