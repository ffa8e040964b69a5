#pragma once

#include <span>

class KtApDocument;

namespace parts {

class Watches;

constexpr const wchar_t* kCommandName = L"parts";
constexpr const wchar_t* kCommandUsage =
    L"parts [BLOCK...|from TEMPLATE] [by reference|occurrence|component] [where TAG=TEXT...] [to FILE] "
    L"[as table X,Y]; parts show|check|stop; parts heartbeat MS|off";

/// Does what the words behind the command's name ask for. Throws Refusal, with nothing changed but the
/// drawing, which the host puts back.
void runPartsCommand(Watches& watches, KtApDocument& document, std::span<const wchar_t* const> words);

} // namespace parts
