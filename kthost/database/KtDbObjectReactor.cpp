#include <KtDbObjectReactor.h>

KtDbObjectReactor::KtDbObjectReactor() = default;
KtDbObjectReactor::~KtDbObjectReactor() = default;

void KtDbObjectReactor::cancelled(const KtDbObject* /*object*/) {}

void KtDbObjectReactor::copied(const KtDbObject* /*object*/, const KtDbObject* /*copy*/) {}

void KtDbObjectReactor::erased(const KtDbObject* /*object*/, bool /*erasing*/) {}

void KtDbObjectReactor::goodbye(const KtDbObject* /*object*/) {}

void KtDbObjectReactor::openedForModify(const KtDbObject* /*object*/) {}

void KtDbObjectReactor::modified(const KtDbObject* /*object*/) {}

void KtDbObjectReactor::subObjectModified(const KtDbObject* /*object*/, const KtDbObject* /*subObject*/) {}

void KtDbObjectReactor::modifyUndone(const KtDbObject* /*object*/) {}

void KtDbObjectReactor::modifiedXData(const KtDbObject* /*object*/) {}

void KtDbObjectReactor::unappended(const KtDbObject* /*object*/) {}

void KtDbObjectReactor::reappended(const KtDbObject* /*object*/) {}

void KtDbObjectReactor::objectClosed(KtDbObjectId /*id*/) {}
