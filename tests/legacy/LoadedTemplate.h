#pragma once

#include "legacy/ArchiveReader.h"
#include "legacy/ArchiveWriter.h"
#include "legacy/CEattMain.h"
#include "legacy/TemplateFailure.h"
#include "legacy/TemplateStream.h"
#include "tests/legacy/MemorySource.h"
#include "tests/legacy/TemplateBytes.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>

/// What reading some bytes as a template comes to, each failure with the place where it happened.
struct LoadedTemplate {
    explicit LoadedTemplate(const std::string& bytes) : source(bytes), reader(source) {
        try {
            header.m_arrBlocks = loadTemplate(reader, header);
        } catch (const ArchiveFailure& failure) {
            archiveFailure = failure;
        } catch (const std::bad_alloc&) {
            outOfMemory = true;
        }
    }

    explicit LoadedTemplate(const TemplateBytes& bytes) : LoadedTemplate(bytes.bytes()) {}

    [[nodiscard]] bool succeeded() const { return !archiveFailure && !outOfMemory; }

    [[nodiscard]] const CEattBlockInfo& block(std::size_t i) const { return *header.m_arrBlocks.at(i); }

    /// The cause and the offset of a failure of the archive kind; a test fails here when there is none.
    [[nodiscard]] std::pair<ArchiveFailure::Cause, std::uint64_t> failure() const {
        EXPECT_TRUE(archiveFailure.has_value());
        return archiveFailure ? std::pair(archiveFailure->cause(), archiveFailure->offset())
                              : std::pair(ArchiveFailure::Cause{}, TemplatePlace::kNone);
    }

    MemorySource source;
    ArchiveReader reader;
    CEattMain header;
    std::optional<ArchiveFailure> archiveFailure;
    bool outOfMemory = false;
};

/// What is written of a template.
inline std::string storedBytes(CEattMain& source) {
    std::string bytes;
    ArchiveWriter writer(bytes);
    storeTemplate(writer, source);
    return bytes;
}
