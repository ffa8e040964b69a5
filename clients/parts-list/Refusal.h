#pragma once

#include <exception>
#include <string>
#include <utility>

namespace parts {

/// Why a command cannot be done, as people are to read it.
class Refusal : public std::exception {
public:
    explicit Refusal(std::wstring reason) : reason_(std::move(reason)) {}

    const char* what() const noexcept override { return "refused"; }

    const std::wstring& reason() const noexcept { return reason_; }

private:
    std::wstring reason_;
};

} // namespace parts
