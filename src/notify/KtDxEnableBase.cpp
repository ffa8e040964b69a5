#include "notify/KtDxEnableBase.h"

KtDxEnableBase::~KtDxEnableBase() = default;

bool KtDxEnableBase::isEnabled() const {
    return enabled_;
}

Orbx::ErrorStatus KtDxEnableBase::setEnabled(bool enable) {
    enabled_ = enable;
    return Orbx::eOk;
}
