#include "tests/legacy/TemplateBytes.h"
#include "tests/support/AwkwardFolders.h"
#include "tests/support/TempFolder.h"
#include "tools/ktemplate/Commands.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

namespace {

using ktemplate::Status;
namespace fs = std::filesystem;

class KtemplatePaths : public testing::TestWithParam<fs::path> {
protected:
    fs::path write(const std::string& name, const std::string& bytes) const {
        std::ofstream(systemPath(awkward_.path() / name), std::ios::binary) << bytes;
        return awkward_.path() / name;
    }

    fs::path json() const { return write("a.json", R"({"version": 1, "blocks": []})"); }

    static std::string empty() { return TemplateBytes().header(0).bytes(); }

    TempFolder folder_;
    awkward::Folder awkward_{folder_.path(), GetParam()};
    std::ostringstream out_;
    std::ostringstream err_;
    ktemplate::Console console_{out_, err_};
};

TEST_P(KtemplatePaths, AreMadeAnew) {
    const fs::path made = awkward_.path() / "a.blk";
    EXPECT_EQ(ktemplate::make(json(), made, console_), Status::sound) << err_.str();
    EXPECT_EQ(contentsOf(made), empty());
}

TEST_P(KtemplatePaths, AreReplaced) {
    const fs::path made = write("a.blk", "old");
    EXPECT_EQ(ktemplate::make(json(), made, console_), Status::sound) << err_.str();
    EXPECT_EQ(contentsOf(made), empty());
}

TEST_P(KtemplatePaths, AreKnownByAnotherSpelling) {
    const fs::path source = json();
    EXPECT_EQ(ktemplate::make(source, awkward_.path() / "." / "a.json", console_), Status::usage);
}

TEST_P(KtemplatePaths, AreReadAndNamed) {
    const fs::path file = write("a.blk", empty());
    const std::u8string name = file.generic_u8string();
    EXPECT_EQ(ktemplate::check({file}, console_), Status::sound);
    EXPECT_EQ(out_.str(), std::string(name.begin(), name.end()) + ": sound, blocks: 0, attributes: 0\n");
}

TEST_P(KtemplatePaths, AreReadAsClientsDo) {
    EXPECT_EQ(ktemplate::lists(write("a.blk", empty()), console_), Status::sound) << err_.str();
}

INSTANTIATE_TEST_SUITE_P(Of, KtemplatePaths, awkward::folders(), awkward::nameOfFolder);

} // namespace
