#include "kthost/documents/CommandRegistry.h"
#include "kthost/documents/DocumentManager.h"

#include <KtArray.h>

namespace kthost {

CommandResult callModuleCommand(Document& document, const ModuleCommand& command,
                                const std::vector<std::wstring>& words) {
    KtArray<const wchar_t*> pointers(words.size());
    for (const std::wstring& word : words) {
        pointers.append(word.c_str());
    }
    const KtEdCommandFunction function = command.function; // a copy: a command may remove itself
    return function(&document, pointers) ? CommandResult::done : CommandResult::failed;
}

CommandOutcome runModuleCommand(DocumentManager& documents, Document& document, const ModuleCommand& command,
                                const std::vector<std::wstring>& words) {
    const std::wstring name = command.name; // a copy for the same reason
    return documents.runCommand(document, name, [&command, &words](Document& target) {
        return callModuleCommand(target, command, words);
    });
}

} // namespace kthost
