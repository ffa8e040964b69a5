#pragma once

#include "tests/histories/Drawn.h"
#include "tests/histories/Scaffolds.h"
#include "tests/histories/Shrink.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

namespace histories {

/// Makes up a history line by line, each to fit the host as the lines before have left it. Some cannot be
/// done all the same: that is part of it.
class Generator {
public:
    /// `drawingsFolder` holds the drawings to attach. The same seed gives the same history on a host that
    /// does the same.
    Generator(kthost::Session& session, std::string drawingsFolder, std::uint32_t seed)
        : session_(session),
          folder_(std::move(drawingsFolder)),
          drawn_(session, seed) {}

    /// What a history begins with: modules, clients and a drawing, in this order or another.
    History opening();
    std::string next();

    /// How many lines a history should have that began like this one.
    std::size_t length() const { return length_; }

private:
    using Maker = std::string (Generator::*)();

    struct Choice {
        std::uint32_t weight;
        Maker make;
    };

    template <std::size_t kCount>
    std::string choose(const Choice (&choices)[kCount]);

    std::string withoutDrawing();
    std::string repair();
    std::string edit();
    std::string referenceEdit();
    std::string definitionEdit();
    std::string dynamicEdit();
    std::string externalEdit();
    std::string history();
    std::string documents();
    std::string client();
    std::string list();
    std::string busy();
    std::string held();
    std::string modules();
    std::string together();
    std::string nonsense();
    std::string puppet();
    std::string puppetDirection();
    std::string innerLine();

    std::string insert();
    std::string attributes();
    std::string set();
    std::string move();
    std::string copy();
    std::string erase();
    std::string restore();
    std::string attribute();
    std::string eraseAttribute();
    std::string restoreAttribute();
    std::string xdata();
    std::string table();

    std::string define();
    std::string defineFrom();
    std::string redefine();
    std::string rename();
    std::string purge();
    std::string layout();

    std::string anonymous();
    std::string dynamic();
    std::string represent();
    std::string representBy();
    std::string unit();

    std::string file();
    std::string attachExternal();

    std::string puppetAttach();
    std::string puppetDetach();
    std::string puppetEvery();
    std::string puppetUpdate();
    std::string puppetEdit();

    kthost::Session& session_;
    std::string folder_;
    Drawn drawn_;
    std::size_t length_ = 0;
    std::uint32_t made_ = 0;
    bool recording_ = true;
    bool notifyLoaded_ = true;
    bool listLoaded_ = true;
    bool listIsDoubtful_ = false;
    std::uint32_t busyWith_ = 0; ///< number of things said to keep the host from being idle
};

} // namespace histories
