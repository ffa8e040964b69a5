#pragma once

class ArchiveReader;
class ArchiveWriter;

/// One archive stream, either storing or loading, as `Serialize` operations take it. Does not own its end.
class CArchive {
public:
    explicit CArchive(ArchiveReader& reader) : reader_(&reader) {}

    explicit CArchive(ArchiveWriter& writer) : writer_(&writer) {}

    [[nodiscard]] bool IsStoring() const { return writer_ != nullptr; }

    /// Only while loading.
    [[nodiscard]] ArchiveReader& reader() const { return *reader_; }

    /// Only while storing.
    [[nodiscard]] ArchiveWriter& writer() const { return *writer_; }

private:
    ArchiveReader* reader_ = nullptr;
    ArchiveWriter* writer_ = nullptr;
};
