#pragma once

#include "DocumentWatch.h"

#include <KtApDocManagerReactor.h>

#include <map>
#include <memory>

namespace parts {

/// The documents that this module does something for. It hears when one goes.
class Watches : public KtApDocManagerReactor {
public:
    Watches();
    /// Stops everything.
    ~Watches() override;

    DocumentWatch& of(KtApDocument& document);

    void documentToBeDestroyed(KtApDocument* document) override;

private:
    std::map<KtApDocument*, std::unique_ptr<DocumentWatch>> watches_;
};

} // namespace parts
