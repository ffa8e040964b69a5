#include "kthost/audit/Trace.h"

#include <SystemPath.h>

#include "kthost/audit/JsonText.h"
#include "kthost/audit/TraceIds.h"
#include "kthost/runtime/CodeText.h"
#include "kthost/window/WindowCalls.h"

#include <fstream>
#include <utility>

namespace kthost {

namespace detail {

bool traceOpen = false;

} // namespace detail

namespace {

std::ofstream& traceFile() {
    static std::ofstream file;
    return file;
}

std::uint64_t linesWritten = 0;

std::function<TracedObject(KtDbObjectId)>& idDescriber() {
    static std::function<TracedObject(KtDbObjectId)> describer;
    return describer;
}

void appendName(std::string& line, std::string_view name) {
    line += ", ";
    appendJson(line, name);
    line += ": ";
}

std::string hexadecimal(std::uint64_t value) {
    std::string digits;
    do {
        digits.insert(digits.begin(), "0123456789ABCDEF"[value & 0xF]);
        value >>= 4;
    } while (value != 0);
    return digits;
}

void appendObject(std::string& line, const TracedObject& object) {
    if (!object.className.empty()) {
        appendName(line, "class");
        appendJson(line, object.className);
    }
    if (object.handle != 0) {
        appendName(line, "handle");
        appendJson(line, hexadecimal(object.handle));
    }
    if (!object.name.empty()) {
        appendName(line, "name");
        appendJson(line, object.name);
    }
}

} // namespace

bool openTrace(const std::filesystem::path& file) {
    closeTrace();
    std::ofstream& stream = traceFile();
    // Unbuffered: each line is one write, so a host that crashes leaves every line up to there.
    stream.rdbuf()->pubsetbuf(nullptr, 0);
    stream.open(systemPath(file), std::ios::binary | std::ios::trunc);
    linesWritten = 0;
    detail::traceOpen = stream.is_open();
    setAnswered(WindowCall::postMessage, detail::traceOpen);
    return detail::traceOpen;
}

void closeTrace() {
    detail::traceOpen = false;
    setAnswered(WindowCall::postMessage, false);
    traceFile().close();
    traceFile().clear();
}

void setTraceIdDescriber(std::function<TracedObject(KtDbObjectId)> describer) {
    idDescriber() = std::move(describer);
}

TraceLine::TraceLine(std::string_view event) : line_("{\"n\": ") {
    line_ += std::to_string(++linesWritten);
    field("event", event);
}

TraceLine::~TraceLine() {
    line_ += "}\n";
    if (tracing()) {
        traceFile().write(line_.data(), static_cast<std::streamsize>(line_.size()));
    }
}

TraceLine& TraceLine::field(std::string_view name, std::string_view text) {
    appendName(line_, name);
    appendJson(line_, text);
    return *this;
}

TraceLine& TraceLine::field(std::string_view name, std::wstring_view text) {
    appendName(line_, name);
    appendJson(line_, text);
    return *this;
}

TraceLine& TraceLine::field(std::string_view name, const wchar_t* text) {
    if (text != nullptr) {
        return field(name, std::wstring_view(text));
    }
    appendName(line_, name);
    line_ += "null";
    return *this;
}

TraceLine& TraceLine::field(std::string_view name, std::int64_t number) {
    appendName(line_, name);
    line_ += std::to_string(number);
    return *this;
}

TraceLine& TraceLine::field(std::string_view name, bool value) {
    appendName(line_, name);
    line_ += value ? "true" : "false";
    return *this;
}

TraceLine& TraceLine::field(std::string_view name, KtDbObjectId id) {
    appendName(line_, name);
    line_ += "{\"id\": " + std::to_string(id.asUnsigned());
    if (idDescriber()) {
        appendObject(line_, idDescriber()(id));
    }
    line_ += '}';
    return *this;
}

TraceLine& TraceLine::address(std::string_view name, const void* address) {
    return field(name, codeText(address));
}

} // namespace kthost
