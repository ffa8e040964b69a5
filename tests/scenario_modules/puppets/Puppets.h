#pragma once

#include <KtArray.h>

#include <cstddef>
#include <stdexcept>

class KtApDocument;

/// Clients of KtDxNotify that do what a script tells them, at the moment that it tells them, from inside
/// their callbacks as well:
///
///     puppet N attach BLOCK...        watches these blocks of the current document; * stands for all
///     puppet N detach
///     puppet N every MS               is called at idle checks
///     puppet N never
///     puppet update [force] [notify]  brings the block graph up to date
///     puppet draw                     draws a table in model space
///     puppet strike BLOCK             erases the first reference to a block
///     puppet throw                    throws an exception, from inside a callback to whoever called
///     puppet at DOCUMENT ...          any of these on a document that need not be current
///     puppet N when called ...        any of these, or nothing, each time the puppet is called; those of one
///                                     puppet are done in the order in which they were given
namespace puppets {

constexpr const wchar_t* kCommandName = L"puppet";
constexpr const wchar_t* kCommandUsage =
    L"puppet [at DOCUMENT] N attach BLOCK...|detach|every MS|never; puppet [at DOCUMENT] update [force] "
    L"[notify]|draw|strike BLOCK|throw; puppet N when called [LINE WITHOUT 'puppet'|nothing]";

/// What a puppet throws because it was told to.
class Outburst : public std::runtime_error {
public:
    Outburst() : std::runtime_error("thrown by a puppet") {}
};

/// The command's function.
bool runPuppetCommand(KtApDocument* document, const KtArray<const wchar_t*>& words);

/// Detaches every puppet from every open document, and has all forget what to do when they are called.
void dismissPuppets();

/// Number of changes that puppets made to a drawing from inside their callbacks so far.
std::size_t editsFromCallbacks();
/// Number of exceptions that puppets threw from inside their callbacks because they were told to.
std::size_t outburstsFromCallbacks();

} // namespace puppets
