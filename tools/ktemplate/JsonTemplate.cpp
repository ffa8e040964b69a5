#include "tools/ktemplate/JsonTemplate.h"

#include "tools/ktemplate/Text.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <cstdint>
#include <istream>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace ktemplate {

namespace {

enum class Kind { object, array, string, boolean, integer };

/// A member that every object of one sort has.
struct Member {
    std::string_view name;
    Kind kind;
};

constexpr Member kRootMembers[] = {{"version", Kind::integer}, {"blocks", Kind::array}};
constexpr Member kBlockMembers[] = {
    {"name", Kind::string}, {"selected", Kind::boolean}, {"attributes", Kind::array}};
constexpr Member kAttributeMembers[] = {{"tag", Kind::string}, {"selected", Kind::boolean}};

/// What holds the value that comes next.
enum class Level { document, root, blocks, block, attributes, attribute };

constexpr std::string_view nameOf(Kind kind) {
    constexpr std::string_view kNames[] = {"an object", "an array", "a string", "true or false",
                                           "an integer"};
    return kNames[static_cast<std::size_t>(kind)];
}

std::span<const Member> membersAt(Level level) {
    switch (level) {
    case Level::root:
        return kRootMembers;
    case Level::block:
        return kBlockMembers;
    case Level::attribute:
        return kAttributeMembers;
    default:
        return {};
    }
}

/// Takes the values of a JSON text one by one and puts the template together from them.
class TemplateBuilder : public nlohmann::json_sax<nlohmann::json> {
public:
    std::unique_ptr<CEattMain> take() { return std::move(made_); }

    bool null() override { refuseKind("null"); }

    bool boolean(bool value) override;
    bool number_integer(std::int64_t value) override;
    bool number_unsigned(std::uint64_t value) override;

    bool number_float(double /*value*/, const std::string& /*text*/) override {
        refuseKind("a number with a fraction");
    }

    bool string(std::string& value) override;

    bool binary(nlohmann::json::binary_t& /*value*/) override { refuseKind("binary data"); }

    bool start_object(std::size_t /*elements*/) override;
    bool key(std::string& name) override;
    bool end_object() override;
    bool start_array(std::size_t /*elements*/) override;
    bool end_array() override;
    bool parse_error(std::size_t position, const std::string& lastToken,
                     const nlohmann::detail::exception& failure) override;

private:
    [[nodiscard]] std::string containerPointer() const;
    [[nodiscard]] std::string pointer() const;
    [[nodiscard]] Kind due() const;
    [[noreturn]] static void refuse(const std::string& where, const std::string& reason);
    [[noreturn]] void refuseKind(std::string_view found) const;
    void require(Kind kind) const;
    void addAttribute();

    [[nodiscard]] CEattBlockInfo& block() const { return *made_->m_arrBlocks.back(); }

    std::unique_ptr<CEattMain> made_ = std::make_unique<CEattMain>();
    Level level_ = Level::document;
    const Member* member_ = nullptr; ///< whose value comes next; null outside objects
    unsigned seen_[3] = {};          ///< a bit for each member that the root, block, attribute has had
    std::size_t attributes_ = 0;     ///< complete ones of this block
    std::wstring tag_;               ///< of this attribute
    bool selected_ = false;          ///< of this attribute
};

/// The objects that are open at a level, from 0 for the root's.
constexpr std::size_t depthOf(Level level) {
    return level == Level::root ? 0 : level == Level::block ? 1 : 2;
}

std::string escaped(std::string_view name) {
    std::string token;
    for (const char character : name) {
        if (character == '~' || character == '/') {
            token += character == '~' ? "~0" : "~1";
        } else {
            token += character;
        }
    }
    return token;
}

std::string TemplateBuilder::containerPointer() const {
    const std::size_t blocks = made_->m_arrBlocks.size();
    switch (level_) {
    case Level::blocks:
        return "/blocks";
    case Level::block:
        return fmt::format("/blocks/{}", blocks - 1);
    case Level::attributes:
        return fmt::format("/blocks/{}/attributes", blocks - 1);
    case Level::attribute:
        return fmt::format("/blocks/{}/attributes/{}", blocks - 1, attributes_);
    default:
        return "";
    }
}

std::string TemplateBuilder::pointer() const {
    switch (level_) {
    case Level::document:
        return "";
    case Level::blocks:
        return fmt::format("/blocks/{}", made_->m_arrBlocks.size());
    case Level::attributes:
        return fmt::format("{}/{}", containerPointer(), attributes_);
    default:
        return fmt::format("{}/{}", containerPointer(), member_->name);
    }
}

void TemplateBuilder::refuse(const std::string& where, const std::string& reason) {
    throw JsonRefusal((where.empty() ? "the document" : where) + ": " + reason);
}

Kind TemplateBuilder::due() const {
    return member_ != nullptr ? member_->kind : Kind::object;
}

void TemplateBuilder::refuseKind(std::string_view found) const {
    refuse(pointer(), fmt::format("is {} and has to be {}", found, nameOf(due())));
}

void TemplateBuilder::require(Kind kind) const {
    if (kind != due()) {
        refuseKind(nameOf(kind));
    }
}

bool TemplateBuilder::boolean(bool value) {
    require(Kind::boolean);
    if (level_ == Level::block) {
        block().m_bSelected = value;
    } else {
        selected_ = value;
    }
    return true;
}

bool TemplateBuilder::number_integer(std::int64_t value) {
    require(Kind::integer);
    if (!std::in_range<std::int32_t>(value)) {
        refuse(pointer(), fmt::format("is {} and has to fit into 32 bits", value));
    }
    made_->m_nVersion = static_cast<std::int32_t>(value);
    return true;
}

bool TemplateBuilder::number_unsigned(std::uint64_t value) {
    require(Kind::integer);
    if (!std::in_range<std::int32_t>(value)) {
        refuse(pointer(), fmt::format("is {} and has to fit into 32 bits", value));
    }
    return number_integer(static_cast<std::int64_t>(value));
}

bool TemplateBuilder::string(std::string& value) {
    require(Kind::string);
    if (level_ == Level::block) {
        block().m_strBlockName = wideFromUtf8(value);
        return true;
    }
    tag_ = wideFromUtf8(value);
    if (block().m_mapAttributes.find(tag_) != nullptr) {
        refuse(pointer(),
               fmt::format("\"{}\" is the tag of an earlier attribute of this block", displayText(tag_)));
    }
    return true;
}

bool TemplateBuilder::start_object(std::size_t /*elements*/) {
    require(Kind::object);
    if (level_ == Level::blocks) {
        made_->m_arrBlocks.push_back(std::make_unique<CEattBlockInfo>());
        attributes_ = 0;
        level_ = Level::block;
    } else {
        level_ = level_ == Level::document ? Level::root : Level::attribute;
    }
    seen_[depthOf(level_)] = 0;
    return true;
}

bool TemplateBuilder::key(std::string& name) {
    const auto members = membersAt(level_);
    const auto found =
        std::find_if(members.begin(), members.end(), [&](const Member& m) { return m.name == name; });
    const std::string where = containerPointer() + "/" + displayBytes(escaped(name));
    if (found == members.end()) {
        refuse(where, "there is no such member in a template");
    }
    unsigned& seen = seen_[depthOf(level_)];
    const unsigned bit = 1U << static_cast<unsigned>(found - members.begin());
    if ((seen & bit) != 0) {
        refuse(where, "is there twice");
    }
    seen |= bit;
    member_ = &*found;
    return true;
}

void TemplateBuilder::addAttribute() {
    auto entry = std::make_unique<AttributeEntry>();
    entry->m_bSelected = selected_;
    block().m_mapAttributes.add(std::move(tag_), std::move(entry));
    ++attributes_;
}

bool TemplateBuilder::end_object() {
    const auto members = membersAt(level_);
    for (std::size_t i = 0; i < members.size(); ++i) {
        if ((seen_[depthOf(level_)] & (1U << i)) == 0) {
            refuse(containerPointer(), fmt::format("has no \"{}\"", members[i].name));
        }
    }
    if (level_ == Level::attribute) {
        addAttribute();
    }
    level_ = level_ == Level::attribute ? Level::attributes
             : level_ == Level::block   ? Level::blocks
                                        : Level::document;
    member_ = nullptr;
    return true;
}

bool TemplateBuilder::start_array(std::size_t /*elements*/) {
    require(Kind::array);
    level_ = level_ == Level::root ? Level::blocks : Level::attributes;
    member_ = nullptr;
    return true;
}

bool TemplateBuilder::end_array() {
    level_ = level_ == Level::blocks ? Level::root : Level::block;
    return true;
}

bool TemplateBuilder::parse_error(std::size_t position, const std::string& /*lastToken*/,
                                  const nlohmann::detail::exception& failure) {
    // The library's own name for the failure stands before the reason, in brackets.
    const std::string_view reason = failure.what();
    const std::size_t bracket = reason.find("] ");
    refuse(fmt::format("byte {}", position),
           displayBytes(reason.substr(bracket == std::string_view::npos ? 0 : bracket + 2)));
}

} // namespace

std::unique_ptr<CEattMain> templateFromJson(std::istream& in) {
    TemplateBuilder builder;
    nlohmann::json::sax_parse(in, &builder);
    return builder.take();
}

} // namespace ktemplate
