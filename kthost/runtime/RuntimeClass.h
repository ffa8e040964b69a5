#pragma once

#include <KtRxClass.h>

#include <string>
#include <vector>

namespace kthost {

/// Class record of a host class. One is made, once, by the `desc` of each run-time class and lives as long as
/// the process; a parent is therefore always older than its children.
class RuntimeClass final : public KtRxClass {
public:
    RuntimeClass(const wchar_t* name, KtRxClass* parent);

    const wchar_t* name() const override { return name_.c_str(); }

    KtRxClass* parent() const override { return parent_; }

    bool isDerivedFrom(const KtRxClass* ancestor) const override;
    KtRxObject* queryX(const KtRxClass* protocol) const override;
    KtRxObject* addX(const KtRxClass* protocol, KtRxObject* extension) override;
    KtRxObject* removeX(const KtRxClass* protocol) override;

private:
    struct Extension {
        const KtRxClass* protocol;
        KtRxObject* object; // not owned
    };

    std::wstring name_;
    KtRxClass* parent_;
    std::vector<Extension> extensions_; // a class has few, most have none
};

} // namespace kthost

/// Defines `desc` and `isA` of a run-time class.
#define KTHOST_RUNTIME_CLASS(Class, Parent)                                                                  \
    KtRxClass* Class::desc() {                                                                               \
        static kthost::RuntimeClass record(L"" #Class, Parent::desc());                                      \
        return &record;                                                                                      \
    }                                                                                                        \
    KtRxClass* Class::isA() const {                                                                          \
        return Class::desc();                                                                                \
    }
