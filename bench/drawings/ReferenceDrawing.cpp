#include "bench/drawings/ReferenceDrawing.h"

#include "bench/drawings/Layouts.h"
#include "bench/drawings/Require.h"
#include "kthost/database/Attributes.h"
#include "kthost/database/DatabaseQueries.h"
#include "kthost/database/Definitions.h"
#include "kthost/database/References.h"

#include <algorithm>
#include <string>

namespace bench {

namespace {

const std::vector<kthost::AttributeText>& attributeTexts() {
    static const std::vector<kthost::AttributeText> texts{
        {L"Reference", L"R1"}, {L"Value", L"10k"}, {L"Footprint", L"0603"}, {L"Supplier", L"any"}};
    return texts;
}

} // namespace

ReferenceDrawing::ReferenceDrawing(kthost::Database& database, std::size_t references) : database_(database) {
    database_.setUndoRecording(false);
    defineAll();
    containers_ = makeLayouts(database_, kContainers);
    references_.reserve(references + references / 50);
    for (std::size_t i = 0; i < references; ++i) {
        insertOne(containers_[i * kContainers / references]);
    }
}

void ReferenceDrawing::defineAll() {
    definitions_.reserve(kDefinitions);
    for (std::size_t i = 0; i < kDefinitions; ++i) {
        KtDbObjectId id;
        require(kthost::addDefinition(database_, L"part" + std::to_wstring(i), id));
        definitions_.push_back(id);
    }
}

void ReferenceDrawing::insertOne(KtDbObjectId container) {
    kthost::NewReference reference;
    reference.definition = definitions_[below(kDefinitions)];
    reference.container = container;
    reference.attributes = attributeTexts();
    require(kthost::insertReference(database_, reference, last_));
    references_.push_back(last_);
}

std::size_t ReferenceDrawing::below(std::size_t bound) {
    return static_cast<std::size_t>(random_()) % bound; // even enough for bounds far below the generator's
}

void ReferenceDrawing::edit(std::size_t count) {
    constexpr std::size_t kStride = 7919; // a prime, so that all have their turn
    for (std::size_t i = 0; i < count; ++i) {
        edits_ = (edits_ + kStride) % references_.size();
        require(kthost::setAttributeText(database_, references_[edits_], L"Value", L"22k"));
    }
}

void ReferenceDrawing::insert(std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        insertOne(containers_[below(kContainers)]);
    }
}

Ids ReferenceDrawing::take(std::size_t count) {
    Ids taken;
    taken.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        std::swap(references_[below(references_.size())], references_.back());
        taken.push_back(references_.back());
        references_.pop_back();
    }
    const auto byDefinition = [](KtDbObjectId left, KtDbObjectId right) {
        return std::pair(kthost::definitionOf(left), left) < std::pair(kthost::definitionOf(right), right);
    };
    std::sort(taken.begin(), taken.end(), byDefinition);
    return taken;
}

void ReferenceDrawing::erase(kthost::Database& database, const Ids& references) {
    for (const KtDbObjectId reference : references) {
        require(kthost::eraseReference(database, reference));
    }
}

} // namespace bench
