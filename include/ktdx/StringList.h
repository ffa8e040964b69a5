#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// An ordered list of strings that the module fills and its caller owns. The module calls it and never makes,
/// keeps or deletes one, so that each side uses its own memory and its own string types.
class KtDxStringList {
public:
    /// Empties the list. Must not throw.
    virtual void removeAll() = 0;
    /// Appends a copy of the `length` characters at `text`, which may hold zeros and need not end in one;
    /// `text` is valid during the call only. May throw std::bad_alloc; anything else passes through the
    /// module to its caller.
    virtual void addTail(const wchar_t* text, std::size_t length) = 0;

protected:
    KtDxStringList() = default;
    KtDxStringList(const KtDxStringList&) = default;
    KtDxStringList& operator=(const KtDxStringList&) = default;
    ~KtDxStringList() = default;
};

/// The list ready made, over a vector; for any thread, one at a time.
// NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor): final, and never deleted by its base
class KtDxStringVector final : public KtDxStringList {
public:
    void removeAll() override { strings_.clear(); }

    void addTail(const wchar_t* text, std::size_t length) override { strings_.emplace_back(text, length); }

    [[nodiscard]] const std::vector<std::wstring>& strings() const { return strings_; }

private:
    std::vector<std::wstring> strings_;
};
