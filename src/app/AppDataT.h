#pragma once

#include <KtApDocManager.h>
#include <KtApDocManagerReactor.h>
#include <OrbxErrorStatus.h>

#include "app/LeakOnPurpose.h"
#include "notify/ByAddress.h"

#include <map>
#include <memory>
#include <new>
#include <set>
#include <tuple>

/// Keeps one record of type T for each open document of the host and owns it. Records are made when documents
/// are created (with auto-create on) or on first request, and destroyed when their document is about to go.
/// Once it has made its first record the registry hears the host's document manager. T is constructed from
/// the host's document. User-interface thread only.
template <typename T>
class AppDataT : public KtApDocManagerReactor {
public:
    AppDataT() = default;
    ~AppDataT() override;

    void documentCreated(KtApDocument* document) override;
    void documentToBeDestroyed(KtApDocument* document) override;
    void documentCreateCancelled(KtApDocument* document) override;

    /// The document's record; null when there is none and `create` is false, when the document has no
    /// drawing, and when there is no memory. The registry keeps it.
    virtual T* getData(KtApDocument* document, bool create);
    /// False when the document had no record.
    virtual bool removeData(KtApDocument* document);
    virtual bool isReactorAttached() const;
    /// Detaching destroys every record. eMissing without a document manager.
    virtual Orbx::ErrorStatus setReactorAttached(bool attach);
    virtual bool isAutoCreate() const;
    virtual Orbx::ErrorStatus setAutoCreate(bool on);
    virtual Orbx::ErrorStatus createDataForAllDocuments();
    virtual Orbx::ErrorStatus removeAllData();
    /// Drops the entries of documents that are not open any more. eMissing, and nothing dropped, without a
    /// document manager and when there is no memory.
    virtual Orbx::ErrorStatus purgeStaleData();

protected:
    using Records = std::map<KtApDocument*, T*, ByAddress>;

    Records& records() { return records_; }

    /// The record that is found without a search if its document is asked for next; null when there is none.
    T* cachedRecord() { return cache_ == records_.end() ? nullptr : cache_->second; }

    void forgetCachedRecord() { cache_ = records_.end(); }

    /// Stores the flag alone, without attaching.
    void storeAutoCreate(bool on) { autoCreate_ = on; }

    /// What destruction does while the document manager is there: no virtual call, so that destructors may
    /// use it.
    void detachAndRemoveAll();

private:
    static std::unique_ptr<KtApDocumentIterator> openDocuments();
    T* insertNew(KtApDocument* document);
    Orbx::ErrorStatus destroyRecords();

    bool reactorAttached_ = false;
    bool autoCreate_ = false;
    Records records_;
    typename Records::iterator cache_ =
        records_.end(); // entry found last; most look-ups repeat the one before
};

template <typename T>
AppDataT<T>::~AppDataT() {
    detachAndRemoveAll();
    std::ignore = destroyRecords(); // cannot fail
}

template <typename T>
void AppDataT<T>::detachAndRemoveAll() {
    KtApDocManager* manager = ktDocManagerPtr();
    if (manager == nullptr) {
        return;
    }
    if (reactorAttached_) {
        reactorAttached_ = false;
        manager->removeReactor(this);
    }
    std::ignore = destroyRecords(); // cannot fail
}

template <typename T>
void AppDataT<T>::documentCreated(KtApDocument* document) {
    if (isAutoCreate()) {
        getData(document, true);
    }
}

template <typename T>
void AppDataT<T>::documentToBeDestroyed(KtApDocument* document) {
    removeData(document);
    std::ignore = purgeStaleData(); // a host without documents has no stale ones
}

template <typename T>
void AppDataT<T>::documentCreateCancelled(KtApDocument* document) {
    removeData(document);
}

template <typename T>
T* AppDataT<T>::getData(KtApDocument* document, bool create) {
    if (document == nullptr) {
        return nullptr;
    }
    if (cache_ != records_.end() && cache_->first == document) {
        return cache_->second;
    }
    cache_ = records_.find(document);
    if (cache_ != records_.end()) {
        return cache_->second;
    }
    if (!create || document->database() == nullptr) {
        return nullptr;
    }
    T* record = insertNew(document);
    if (record == nullptr) {
        return nullptr;
    }
    if (!isReactorAttached()) {
        std::ignore =
            setReactorAttached(true); // without a document manager nobody has documents to tell us of
    }
    std::ignore = purgeStaleData(); // likewise
    return record;
}

template <typename T>
T* AppDataT<T>::insertNew(KtApDocument* document) {
    std::unique_ptr<T> record(new (std::nothrow) T(document));
    if (record == nullptr) {
        return nullptr;
    }
    try {
        cache_ = records_.emplace(document, record.get()).first;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
    return record.release();
}

template <typename T>
bool AppDataT<T>::removeData(KtApDocument* document) {
    const auto entry = document == nullptr ? records_.end() : records_.find(document);
    if (entry == records_.end()) {
        return false;
    }
    delete entry->second;
    entry->second = nullptr;
    cache_ = records_.erase(entry);
    return true;
}

template <typename T>
bool AppDataT<T>::isReactorAttached() const {
    return reactorAttached_;
}

template <typename T>
Orbx::ErrorStatus AppDataT<T>::setReactorAttached(bool attach) {
    KtApDocManager* manager = ktDocManagerPtr();
    if (manager == nullptr) {
        return Orbx::eMissing;
    }
    if (attach != reactorAttached_) {
        reactorAttached_ = attach;
        if (attach) {
            manager->addReactor(this);
        } else {
            manager->removeReactor(this);
        }
    }
    if (!attach) {
        std::ignore = removeAllData(); // cannot fail
    } else if (isAutoCreate()) {
        std::ignore =
            createDataForAllDocuments(); // a document that gets no record now gets one on first request
    }
    return Orbx::eOk;
}

template <typename T>
bool AppDataT<T>::isAutoCreate() const {
    return autoCreate_;
}

template <typename T>
Orbx::ErrorStatus AppDataT<T>::setAutoCreate(bool on) {
    storeAutoCreate(on);
    if (on) {
        std::ignore = setReactorAttached(true); // the flag holds all the same; the first record attaches
    }
    return Orbx::eOk;
}

template <typename T>
std::unique_ptr<KtApDocumentIterator> AppDataT<T>::openDocuments() {
    KtApDocManager* manager = ktDocManagerPtr();
    return std::unique_ptr<KtApDocumentIterator>(manager == nullptr ? nullptr
                                                                    : manager->newDocumentIterator());
}

template <typename T>
Orbx::ErrorStatus AppDataT<T>::createDataForAllDocuments() {
    forgetCachedRecord();
    std::unique_ptr<KtApDocumentIterator> documents = openDocuments();
    if (documents == nullptr) {
        return Orbx::eMissing;
    }
    for (; !documents->done(); documents->step()) {
        getData(documents->document(), true);
    }
    documents.reset();
    forgetCachedRecord();
    return Orbx::eOk;
}

template <typename T>
Orbx::ErrorStatus AppDataT<T>::removeAllData() {
    return destroyRecords();
}

template <typename T>
Orbx::ErrorStatus AppDataT<T>::destroyRecords() {
    for (auto& entry : records_) {
        delete entry.second;
        entry.second = nullptr;
    }
    records_.clear();
    forgetCachedRecord();
    return Orbx::eOk;
}

template <typename T>
Orbx::ErrorStatus AppDataT<T>::purgeStaleData() {
    std::unique_ptr<KtApDocumentIterator> documents = openDocuments();
    if (documents == nullptr) {
        return Orbx::eMissing;
    }
    std::set<KtApDocument*, ByAddress> open;
    try {
        for (; !documents->done(); documents->step()) {
            open.insert(documents->document());
        }
    } catch (const std::bad_alloc&) {
        return Orbx::eMissing;
    }
    documents.reset();
    for (auto entry = records_.begin(); entry != records_.end();) {
        if (entry->first == nullptr || open.contains(entry->first)) {
            ++entry;
            continue;
        }
        // The record is given up and not destroyed: its document is gone without a word, and with it whatever
        // the record would have to let go of. A document that was closed in the ordinary way took its record
        // with it.
        leakOnPurpose(entry->second);
        entry = records_.erase(entry);
        cache_ = entry;
    }
    return Orbx::eOk;
}
