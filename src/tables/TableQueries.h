#pragma once

class KtDbBlockTableRecord;

/// True for the definition of a table entity: an anonymous record whose name has an uppercase T as its second
/// character. Null and records without a name are none.
bool isTableBlock(const KtDbBlockTableRecord* record);
