#include "kthost/database/BlockTable.h"

#include "kthost/database/BlockTableIterator.h"
#include "kthost/database/DatabaseTrace.h"

#include <memory>

namespace kthost {

namespace {

Orbx::ErrorStatus lookUp(const NameIndex& names, std::wstring_view name, KtDbObjectId& id, bool openErased) {
    id = names.living(name);
    if (!id.isNull()) {
        return Orbx::eOk;
    }
    const KtDbObjectId erased = names.erased(name);
    if (erased.isNull()) {
        return Orbx::eKeyNotFound;
    }
    id = openErased ? erased : KtDbObjectId();
    return openErased ? Orbx::eOk : Orbx::eWasErased;
}

} // namespace

Orbx::ErrorStatus BlockTable::getIdAt(const wchar_t* name, KtDbObjectId& id, bool openErased) const {
    id = KtDbObjectId();
    Orbx::ErrorStatus status = Faults::instance().next(HostCall::getIdAt);
    if (status == Orbx::eOk) {
        status = name == nullptr ? Orbx::eInvalidInput : lookUp(contents_->names, name, id, openErased);
    }
    if (tracing()) {
        TraceLine("getIdAt").field("name", name).field("found", id).field("status", status);
    }
    return status;
}

Orbx::ErrorStatus BlockTable::newIterator(KtDbBlockTableIterator*& iterator, bool atBeginning,
                                          bool skipErased) const {
    iterator = nullptr;
    if (const Orbx::ErrorStatus fault = beginCall(HostCall::newTableIterator, "newIterator", objectId());
        fault != Orbx::eOk) {
        return fault;
    }
    auto made = std::make_unique<BlockTableIterator>(objectId(), contents_->records);
    made->startAt(atBeginning, skipErased);
    iterator = made.release();
    return traceCall("newIterator", objectId(), Orbx::eOk);
}

void BlockTable::add(KtDbObjectId record, std::wstring_view name) {
    contents_->records.push_back(record);
    contents_->names.add(name, record);
}

void BlockTable::rename(KtDbObjectId record, std::wstring_view from, std::wstring_view to) {
    contents_->names.remove(from, record);
    contents_->names.add(to, record);
}

std::wstring BlockTable::nextAnonymousName(wchar_t letter) {
    std::uint32_t& last = contents_->lastNumbers[letter];
    std::wstring name;
    do {
        name = std::wstring(L"*") + letter + std::to_wstring(++last);
    } while (!contents_->names.living(name).isNull() || !contents_->names.erased(name).isNull());
    return name;
}

} // namespace kthost
