#include "client/ModificationFileLookup.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "FakeLmhiWrapper.h"
#include "LogRecorder.h"

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

namespace {

TEST(ModificationFileLookupTest, TwoLoadModulesOfTwoFilesGiveFourPathsInOrder) {
  FakeLmhiWrapper lmhi({{"/lm/a/1.xml", "/lm/a/2.xml"}, {"/lm/b/1.xml", "/lm/b/2.xml"}}, 0);
  std::vector<std::string> files;

  getModificationFiles(lmhi, "RadioNode", &files);

  EXPECT_THAT(files, ElementsAre("/lm/a/1.xml", "/lm/a/2.xml", "/lm/b/1.xml", "/lm/b/2.xml"));
  EXPECT_THAT(lmhi.boardTypes, ElementsAre("RadioNode"));
  EXPECT_THAT(lmhi.tags, ElementsAre("modification_files"));
  ASSERT_THAT(lmhi.freed, ElementsAre(lmhi.handedOut));
  std::vector<LoggedRecord> records = LogRecorder::installed().records();
  ASSERT_EQ(2u, records.size());
  EXPECT_EQ("Getting modification files using tag RadioNode ", records[0].text);
  EXPECT_EQ("Found 4 modification files through LMHI using tag RadioNode", records[1].text);
  EXPECT_EQ(SA_LOG_SEV_INFO, records[0].severity);
  EXPECT_EQ(SA_LOG_SEV_INFO, records[1].severity);
}

TEST(ModificationFileLookupTest, AnErrorIsReportedAndLeavesTheListEmpty) {
  FakeLmhiWrapper lmhi({{"/never/returned.xml"}}, 3);
  std::vector<std::string> files;

  getModificationFiles(lmhi, "Lrat", &files);

  EXPECT_THAT(files, IsEmpty());
  EXPECT_THAT(lmhi.freed, IsEmpty());
  std::vector<LoggedRecord> records = LogRecorder::installed().records();
  ASSERT_EQ(2u, records.size());
  EXPECT_EQ("Getting modification files using tag Lrat ", records[0].text);
  EXPECT_EQ("Could not get list of modification files from LMHI using tag modification_files, boardType Lrat, "
            "return code was 3",
            records[1].text);
  EXPECT_EQ(SA_LOG_SEV_INFO, records[1].severity);
  EXPECT_FALSE(LogRecorder::installed().containsPart("Found"));
}

TEST(ModificationFileLookupTest, AnswersOfEveryShapeAreFlattenedInOrder) {
  struct Case {
    const char* name;
    FakeLmhiWrapper::LoadModules modules;
    std::vector<std::string> before;
    std::vector<std::string> expected;
    const char* found;
  };
  const Case cases[] = {
      {"no load modules", {}, {}, {}, "Found 0 modification files through LMHI using tag Bt"},
      {"load module without files", {{}, {"/b/1.xml"}}, {}, {"/b/1.xml"},
       "Found 1 modification files through LMHI using tag Bt"},
      {"duplicates kept", {{"/x.xml", "/x.xml"}, {"/x.xml"}}, {}, {"/x.xml", "/x.xml", "/x.xml"},
       "Found 3 modification files through LMHI using tag Bt"},
      {"appended to the list", {{"/new.xml"}}, {"/old.xml"}, {"/old.xml", "/new.xml"},
       "Found 2 modification files through LMHI using tag Bt"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    LogRecorder::installed().clear();
    FakeLmhiWrapper lmhi(c.modules, 0);
    std::vector<std::string> files = c.before;

    getModificationFiles(lmhi, "Bt", &files);

    EXPECT_THAT(files, ElementsAreArray(c.expected));
    EXPECT_EQ(1u, lmhi.freed.size());
    EXPECT_TRUE(LogRecorder::installed().contains(c.found));
  }
}

TEST(ModificationFileLookupTest, AFileEntryWithoutPathIsALogicError) {
  FakeLmhiWrapper lmhi({{"/a.xml", nullptr}}, 0);
  std::vector<std::string> files;
  EXPECT_THROW(getModificationFiles(lmhi, "Bt", &files), std::logic_error);
}

}  // namespace
