#include "kthost/documents/CommandRegistry.h"
#include "kthost/documents/DocumentManager.h"

#include <KtArray.h>

namespace kthost {

CommandOutcome runModuleCommand(DocumentManager& documents, Document& document, const ModuleCommand& command,
                                const std::vector<std::wstring>& words) {
    KtArray<const wchar_t*> pointers(words.size());
    for (const std::wstring& word : words) {
        pointers.append(word.c_str());
    }
    const KtEdCommandFunction function = command.function; // copies: a command may remove itself
    const std::wstring name = command.name;
    return documents.runCommand(document, name, [&pointers, function](Document& target) {
        return function(&target, pointers) ? CommandResult::done : CommandResult::failed;
    });
}

} // namespace kthost
