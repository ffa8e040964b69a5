#pragma once

#include <OrbxErrorStatus.h>

/// On/off switch of nearly everything in the module. It is a flag and does not nest: enabled twice and
/// disabled once is off. Derived classes do their work first and store the flag last, by calling this class's
/// `setEnabled`; inside the module the state is always asked through `isEnabled`, so that an override is
/// honoured.
class KtDxEnableBase {
public:
    KtDxEnableBase() = default;
    KtDxEnableBase(const KtDxEnableBase&) = delete;
    KtDxEnableBase& operator=(const KtDxEnableBase&) = delete;
    virtual ~KtDxEnableBase();

    virtual bool isEnabled() const;
    virtual Orbx::ErrorStatus setEnabled(bool enable);

private:
    bool enabled_ = false;
};
