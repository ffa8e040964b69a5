#pragma once

#include <KtDbObject.h>

/// What makes a block definition dynamic: the graph by which its representations are evaluated.
class KtDbEvalGraph : public KtDbObject {
public:
    static KtRxClass* desc();
    KtRxClass* isA() const override;

    /// Opens the graph that `object` keeps under `key`; the caller closes it. eKeyNotFound when there is
    /// none.
    static Orbx::ErrorStatus getGraph(KtDbEvalGraph*& graph, const KtDbObject* object, const wchar_t* key,
                                      KtDb::OpenMode mode);
};
