#include "kthost/window/ProgramStart.h"
#include "kthost/window/Terminal.h"
#include "tools/ktemplate/Commands.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <exception>
#include <filesystem>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

namespace {

/// What the command line asks for.
struct Request {
    std::string file;
    std::string from;
    std::string to;
    std::vector<std::string> files;
    bool json = false;
};

void declare(CLI::App& app, Request& request) {
    app.require_subcommand(1);
    auto* show = app.add_subcommand("show", "Print all of a template, selected or not");
    show->add_option("FILE", request.file, "template")->required();
    show->add_flag("--json", request.json, "as the JSON that make takes");
    auto* make = app.add_subcommand("make", "Write the template that some JSON describes");
    make->add_option("FROM", request.from, "JSON, as show --json prints it")->required();
    make->add_option("TO", request.to, "template; replaced if it is there")->required();
    auto* lists = app.add_subcommand("lists", "Print what clients of the module get of a template, as JSON");
    lists->add_option("FILE", request.file, "template")->required();
    auto* check =
        app.add_subcommand("check", "Tell of templates whether they are sound, and if not, where and why");
    check->add_option("FILE", request.files, "templates")->required();
}

std::filesystem::path toPath(const std::string& utf8) {
    return {std::u8string(utf8.begin(), utf8.end())};
}

ktemplate::Status carryOut(const CLI::App& app, const Request& request) {
    const ktemplate::Console console{std::cout, std::cerr, kthost::isTerminal(kthost::StandardStream::error)};
    if (app.got_subcommand("show")) {
        return ktemplate::show(toPath(request.file), request.json, console);
    }
    if (app.got_subcommand("make")) {
        return ktemplate::make(toPath(request.from), toPath(request.to), console);
    }
    if (app.got_subcommand("lists")) {
        return ktemplate::lists(toPath(request.file), console);
    }
    std::vector<std::filesystem::path> files(request.files.size());
    std::transform(request.files.begin(), request.files.end(), files.begin(), toPath);
    return ktemplate::check(files, console);
}

} // namespace

int main(int argc, char** argv) {
    std::vector<std::string> words = kthost::startProgram(argc, argv);
    std::reverse(words.begin(), words.end()); // the parser takes them from the back
    std::ios::sync_with_stdio(false);
    CLI::App app(
        "Reads and writes attribute-extraction templates. Exits with 0 when all is sound, 1 when it is not, "
        "and 2 when it is called wrongly.",
        "ktemplate");
    app.allow_windows_style_options(false); // a word that begins with "/" is a path
    Request request;
    try {
        declare(app, request);
        app.parse(std::move(words));
        return static_cast<int>(carryOut(app, request));
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : static_cast<int>(ktemplate::Status::usage);
    } catch (const std::exception& error) {
        std::cerr << "ktemplate: " << error.what() << '\n';
        return static_cast<int>(ktemplate::Status::unsound);
    }
}
