// Hostile input at the front and in the node's files, through whole runs:
// unreadable and multi-gigabyte files, names of 700 characters, bytes that are
// no UTF-8, share trees with symbolic-link loops, thousands of schemas. Each
// case has one clear outcome, a message naming what is wrong, and a failed
// run writes no model.

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

#include "NodeBuilder.h"
#include "TempDir.h"
#include "WholeRun.h"

namespace e2e {
namespace {

namespace fs = std::filesystem;

const std::string kModFile = "node/lmhi/Radio/modification_files/CXC1_R1A/modification_1_0_0_to_1_1_0.xml";
const std::string kLongName = "Radio" + std::string(695, 'X');

// Replaces a file below `root` by `head` followed by zero bytes up to `size` (sparse: no disk is used).
void sparse(const std::string& root, const std::string& relative, const std::string& head, uintmax_t size) {
  const fs::path file = fs::path(root) / relative;
  std::ofstream(file, std::ios::binary | std::ios::trunc) << head;
  fs::resize_file(file, size);
}

void replace(const std::string& root, const std::string& relative, const std::string& from, const std::string& to) {
  const std::string path = root + "/" + relative;
  std::string text = TempDir::read(path);
  text.replace(text.find(from), from.size(), to);
  std::ofstream(path, std::ios::binary | std::ios::trunc) << text;
}

struct HostileCase {
  const char* name;
  std::function<void(NodeBuilder&)> make;  // turns the good node into the hostile one
  int exitStatus;                          // the wrapper's: 0 success, 1 rolled back, 2 the front failed
  std::string named;                       // in the log, the report or the errors
  bool needsNonRoot = false;               // root reads files whatever their mode
  // Success: an object of Radio's model and the attribute the modification file removed from it.
  std::pair<std::string, std::string> converted = {"radioPortId=2,radioId=1", "weight"};
};

const uintmax_t kThreeGiB = uintmax_t{3} << 30;

const HostileCase kCases[] = {
    {"unreadable modification file",
     [](NodeBuilder& node) { fs::permissions(node.root() + "/" + kModFile, fs::perms::none); }, 1,
     "modification_1_0_0_to_1_1_0.xml", true},
    {"unreadable class file",
     [](NodeBuilder& node) {
       fs::permissions(node.packagePath() + "/share/models/Radio/imm/Radio_imm_classes.xml", fs::perms::none);
     },
     1, "Radio_imm_classes.xml", true},
    {"unreadable old model",
     [](NodeBuilder& node) { fs::permissions(node.nodePath() + "/imm/old/Radio.xml", fs::perms::none); }, 1,
     "Radio.xml", true},
    {"unreadable appdata file",
     [](NodeBuilder& node) {
       fs::permissions(node.packagePath() + "/appdata/voskOamUpgradeModLm.xml", fs::perms::none);
     },
     2, "voskOamUpgradeModLm.xml", true},
    {"3 GiB modification file",
     [](NodeBuilder& node) { sparse(node.root(), kModFile, "<?xml version=\"1.0\"?>\n<modifications>", kThreeGiB); },
     1, "modification_1_0_0_to_1_1_0.xml"},
    {"3 GiB old model",
     [](NodeBuilder& node) {
       sparse(node.root(), "node/imm/old/Radio.xml", "<?xml version=\"1.0\"?>\n<imm:IMM-contents>", kThreeGiB);
     },
     1, "Radio.xml"},
    {"3 GiB appdata file",
     [](NodeBuilder& node) {
       sparse(node.root(), "package/appdata/voskOamUpgradeModLm.xml", "<voskOamUpgradeModLm>", kThreeGiB);
     },
     2, "voskOamUpgradeModLm.xml"},
    {"3 GiB versions file", [](NodeBuilder& node) { sparse(node.root(), "node/versions", "Radio 1_0_0 1_1_0\n", kThreeGiB); },
     1, "versions"},
    {"700-character class name",
     [](NodeBuilder& node) {
       ImmClass cls{kLongName, immAttrs("userLabel:SA_STRING_T")};
       node.add({"Radio", "1_0_0", "1_1_0", {cls}, {{kLongName, cls.rdnName() + "=1", {{"userLabel", {"x"}}}}}});
       node.modificationFile("Radio", "CXC1_R1A", "modification_1_0_0_to_1_1_0.xml",
                             modifications(mo(kLongName, moAction("RemoveAttributeAction", "name=userLabel"))));
     },
     0, "Radio: UPGRADE IS DONE", false, {"r" + kLongName.substr(1) + "Id=1", "userLabel"}},
    {"700-character path of a modification file",
     [](NodeBuilder& node) {
       node.remove(kModFile);
       node.modificationFile("Radio", std::string(250, 'L'), std::string(200, 'p') + "modification_1_0_0_to_1_1_0.xml",
                             modifications(mo("RadioPort", moAction("RemoveAttributeAction", "name=weight"))));
     },
     0, "Radio: UPGRADE IS DONE"},
    {"700-character schema name",
     [](NodeBuilder& node) {
       replace(node.root(), "package/appdata/voskOamUpgradeModLm.xml", "\"Radio\"", "\"" + kLongName + "\"");
     },
     2, "Ignored schemas due to missed imm files: [" + kLongName.substr(0, 300)},  // records end at 512 bytes
    {"appdata that is no UTF-8",
     [](NodeBuilder& node) {
       replace(node.root(), "package/appdata/voskOamUpgradeModLm.xml", "\"Radio\"", "\"Radio\xff\"");
     },
     2, "voskOamUpgradeModLm.xml"},
    {"modification file that is no UTF-8",
     [](NodeBuilder& node) { replace(node.root(), kModFile, "value=\"weight\"", "value=\"w\xc3\x28\""); }, 1,
     "modification_1_0_0_to_1_1_0.xml"},
    {"old model that is no UTF-8",
     [](NodeBuilder& node) { replace(node.root(), "node/imm/old/Radio.xml", "root of Radio", "root \xed\xa0\x80"); },
     1, "Radio.xml"},
    {"share tree with symbolic-link loops",
     [](NodeBuilder& node) {
       const fs::path models = node.packagePath() + "/share/models";
       fs::create_directory_symlink(".", models / "again");
       fs::create_directory_symlink("..", models / "Radio" / "up");
       fs::create_directory_symlink("../..", models / "Radio" / "imm" / "top");
     },
     0, "Radio: UPGRADE IS DONE"},
    {"2000 schemas",
     [](NodeBuilder& node) {
       std::vector<SchemaSetup> schemas;
       for (int i = 0; i < 2000; ++i) schemas.push_back(sampleSchema("S" + std::to_string(i), "3_1_0", "3_1_0"));
       node.add(schemas);
     },
     0, "S1999: UPGRADE IS DONE"},
};

class HostileInputTest : public testing::TestWithParam<HostileCase> {};

TEST_P(HostileInputTest, ClearOutcomeAndNothingWrittenOnFailure) {
  const HostileCase& c = GetParam();
  if (c.needsNonRoot && ::geteuid() == 0) GTEST_SKIP() << "root reads a file whatever its mode";
  TempDir dir;
  NodeBuilder node(dir.path());
  node.add(sampleSchema("Radio", "1_0_0", "1_1_0"));
  node.modificationFile("Radio", "CXC1_R1A", "modification_1_0_0_to_1_1_0.xml",
                        modifications(mo("RadioPort", moAction("RemoveAttributeAction", "name=weight"))));
  c.make(node);
  RunResult run = WholeRun(node).run();

  EXPECT_EQ(c.exitStatus, run.exitStatus) << run.report;
  EXPECT_TRUE(run.loggedParts(c.named) > 0 || run.report.find(c.named) != std::string::npos ||
              run.errors.find(c.named) != std::string::npos)
      << run.report;
  if (c.exitStatus != 0) {
    EXPECT_EQ(std::vector<std::string>{}, run.modelFiles());
  } else {
    const ModelObjects objects = run.objects("Radio");
    const auto object = objects.find(c.converted.first);
    ASSERT_NE(objects.end(), object);
    EXPECT_EQ(0u, object->second.attrs.count(c.converted.second));
  }
}

INSTANTIATE_TEST_SUITE_P(Cases, HostileInputTest, testing::ValuesIn(kCases), [](const auto& info) {
  std::string name = info.param.name;
  for (char& c : name) {
    if (std::isalnum(static_cast<unsigned char>(c)) == 0) c = '_';
  }
  return name;
});

}  // namespace
}  // namespace e2e
