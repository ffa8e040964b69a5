#include <KtDbAttribute.h>
#include <KtDbBlockReference.h>
#include <KtDbBlockRepresentation.h>
#include <KtDbBlockTable.h>
#include <KtDbBlockTableRecord.h>
#include <KtDbDatabase.h>
#include <KtDbEvalGraph.h>
#include <KtDbObject.h>
#include <KtDbObjectReactor.h>
#include <KtDbSymbolTable.h>
#include <KtDbTable.h>

#include "kthost/runtime/RuntimeClass.h"

KTHOST_RUNTIME_CLASS(KtDbDatabase, KtRxObject)
KTHOST_RUNTIME_CLASS(KtDbObjectReactor, KtRxObject)
KTHOST_RUNTIME_CLASS(KtDbBlockRepresentation, KtRxObject)
KTHOST_RUNTIME_CLASS(KtDbObject, KtRxObject)
KTHOST_RUNTIME_CLASS(KtDbSymbolTable, KtDbObject)
KTHOST_RUNTIME_CLASS(KtDbSymbolTableRecord, KtDbObject)
KTHOST_RUNTIME_CLASS(KtDbBlockTable, KtDbSymbolTable)
KTHOST_RUNTIME_CLASS(KtDbBlockTableRecord, KtDbSymbolTableRecord)
KTHOST_RUNTIME_CLASS(KtDbBlockReference, KtDbObject)
KTHOST_RUNTIME_CLASS(KtDbTable, KtDbBlockReference)
KTHOST_RUNTIME_CLASS(KtDbAttribute, KtDbObject)
KTHOST_RUNTIME_CLASS(KtDbEvalGraph, KtDbObject)
