// `dry-run` on the bundled example, once: the report's counts against the
// model files the run produced, and the HTML page as headless Chromium
// renders it.

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <map>
#include <regex>
#include <sstream>
#include <string>

#include "DryRunCommand.h"
#include "TempDir.h"

namespace modtool {
namespace {

struct ClassCounts {
  long old = 0, now = 0, written = 0, copied = 0, created = 0, removed = 0, renamed = 0;
};

// The counts of every class of the report's schema, read from its JSON.
std::map<std::string, ClassCounts> reportedCounts(const std::string& json) {
  static const std::regex kClass(
      "\\{\"class\":\"(\\w+)\",\"old\":(\\d+),\"new\":(\\d+),\"read\":\\d+,\"written\":(\\d+),\"copied\":(\\d+),"
      "\"created\":(\\d+),\"removed\":(\\d+),\"renamed\":(\\d+)");
  std::map<std::string, ClassCounts> counts;
  for (std::sregex_iterator it(json.begin(), json.end(), kClass), end; it != end; ++it) {
    const std::smatch& m = *it;
    counts[m[1]] = {std::stol(m[2]), std::stol(m[3]), std::stol(m[4]), std::stol(m[5]),
                    std::stol(m[6]), std::stol(m[7]), std::stol(m[8])};
  }
  return counts;
}

// Objects per class of an IMM XML file, counted from its object tags.
std::map<std::string, long> objectsPerClass(const std::string& file) {
  static const std::regex kObject("<object class=\"(\\w+)\"");
  const std::string text = TempDir::read(file);
  std::map<std::string, long> counts;
  for (std::sregex_iterator it(text.begin(), text.end(), kObject), end; it != end; ++it) ++counts[(*it)[1]];
  return counts;
}

// Every path below `folder` with its size and time of change.
std::string snapshot(const std::string& folder) {
  std::string listing;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    listing += entry.path().string() + " " + std::to_string(entry.last_write_time().time_since_epoch().count());
    if (entry.is_regular_file()) listing += " " + std::to_string(entry.file_size());
    listing += "\n";
  }
  return listing;
}

class DryRunTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    dir_ = new TempDir;
    const std::string examples = EXAMPLES_DIR;
    html_ = dir_->path() + "/report.html";
    const std::string out = dir_->path() + "/scratch";
    const std::string package = examples + "/package";
    const std::string node = examples + "/node";
    const char* argv[] = {"vosk-modtool", "dry-run",     "--package", package.c_str(), "--node",
                          node.c_str(),   "--schema",    "RadioNode", "--out",         out.c_str(),
                          "--html",       html_.c_str(), "--json",    "--program",     UPGRADER_BINARY};
    std::ostringstream report;
    std::ostringstream errors;
    const std::string nodeBefore = snapshot(node);
    status_ = DryRunCommand::run(static_cast<int>(std::size(argv)), argv, "", {}, report, errors);
    nodeKept_ = snapshot(node) == nodeBefore;
    json_ = report.str() + errors.str();
    model_ = out + "/run/model/RadioNode.xml";
    oldModel_ = examples + "/node/imm/old/RadioNode.xml";
  }
  static void TearDownTestSuite() { delete dir_; }

  static TempDir* dir_;
  static int status_;
  static bool nodeKept_;
  static std::string json_, html_, model_, oldModel_;
};

TempDir* DryRunTest::dir_;
int DryRunTest::status_;
bool DryRunTest::nodeKept_;
std::string DryRunTest::json_, DryRunTest::html_, DryRunTest::model_, DryRunTest::oldModel_;

TEST_F(DryRunTest, CountsMatchTheModelFilesOfTheRun) {
  ASSERT_EQ(status_, 0) << json_;
  EXPECT_TRUE(nodeKept_) << "the node was written";
  const std::map<std::string, ClassCounts> reported = reportedCounts(json_);
  const std::map<std::string, long> before = objectsPerClass(oldModel_);
  const std::map<std::string, long> after = objectsPerClass(model_);
  ASSERT_FALSE(after.empty());
  for (const auto& entry : after) {
    ASSERT_EQ(reported.count(entry.first), 1u) << entry.first;
    const ClassCounts& counts = reported.at(entry.first);
    EXPECT_EQ(counts.now, entry.second) << entry.first;
    EXPECT_EQ(counts.written + counts.copied, entry.second) << entry.first;
  }
  for (const auto& entry : reported) {
    const ClassCounts& counts = entry.second;
    const long old = before.count(entry.first) != 0 ? before.at(entry.first) : 0;
    EXPECT_EQ(counts.old, old) << entry.first;
    // Every old object is kept under its name, renamed or removed.
    EXPECT_LE(counts.removed + counts.renamed, counts.old) << entry.first;
    if (after.count(entry.first) == 0) {
      EXPECT_EQ(counts.removed + counts.renamed, counts.old) << entry.first;
    }
  }
  // The example deletes CellSleepProfile and renames ExternalENodeBFunction.
  EXPECT_EQ(reported.at("CellSleepProfile").removed, before.at("CellSleepProfile"));
  EXPECT_EQ(reported.at("ExternalENodeBFunction").renamed, before.at("ExternalENodeBFunction"));
  EXPECT_NE(json_.find("\"losses\":[\"" + std::to_string(before.at("CellSleepProfile")) + " object(s) removed\"]"),
            std::string::npos);
}

TEST_F(DryRunTest, PageShowsTheCountsInChromium) {
  ASSERT_EQ(status_, 0) << json_;
  if (std::system("command -v chromium >/dev/null 2>&1") != 0) GTEST_SKIP() << "chromium is not installed";
  const std::string command =
      "timeout 120 chromium --headless --no-sandbox --disable-gpu --user-data-dir=" + dir_->path() +
      "/profile --dump-dom file://" + html_ + " 2>/dev/null";
  std::FILE* pipe = ::popen(command.c_str(), "r");
  ASSERT_NE(pipe, nullptr);
  std::string dom;
  char buffer[4096];
  for (size_t n; (n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;) dom.append(buffer, n);
  ASSERT_EQ(::pclose(pipe), 0) << dom;
  const std::map<std::string, ClassCounts> reported = reportedCounts(json_);
  ASSERT_FALSE(reported.empty());
  for (const auto& entry : reported) {
    const std::string row = "<td class=\"class\">" + entry.first +
                            "</td><td class=\"count\" data-column=\"old\" data-value=\"" +
                            std::to_string(entry.second.old) + "\">";
    EXPECT_NE(dom.find(row), std::string::npos) << entry.first;
    EXPECT_NE(dom.find("data-column=\"removed\" data-value=\"" + std::to_string(entry.second.removed) + "\""),
              std::string::npos)
        << entry.first;
  }
}

}  // namespace
}  // namespace modtool
