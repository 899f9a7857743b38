#include "client/ModificationFileLookup.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "LogRecorder.h"
#include "MockEnv.h"

using testing::_;
using testing::ElementsAreArray;
using testing::Invoke;
using testing::NiceMock;
using testing::StrEq;

namespace {

// The handler's answer: load modules, each a list of file paths (nullptr
// for an entry without a path).
using LoadModules = std::vector<std::vector<const char*>>;

class ModificationFileLookupTest : public testing::Test {
 protected:
  // Lets the handler answer `rc` and, on success, `modules` for board type
  // "Bt" under the modification files' tag.
  void answer(const LoadModules& modules, int rc) {
    files_.clear();
    for (const auto& paths : modules) {
      files_.emplace_back();
      for (const char* path : paths) files_.back().push_back(LmhiFileEntry{nullptr, const_cast<char*>(path)});
    }
    lms_.clear();
    for (auto& entries : files_) {
      lms_.push_back(LmhiLoadModule{nullptr, nullptr, nullptr, static_cast<uint32_t>(entries.size()), entries.data()});
    }
    EXPECT_CALL(env, lmhiGetLms(StrEq("Bt"), StrEq("modification_files"), _))
        .WillOnce(Invoke([this, rc](char*, char*, LmhiLms* result) {
          if (rc == 0) *result = LmhiLms{static_cast<uint32_t>(lms_.size()), lms_.data()};
          return rc;
        }));
  }

  NiceMock<MockEnv> env;

 private:
  std::vector<std::vector<LmhiFileEntry>> files_;
  std::vector<LmhiLoadModule> lms_;
};

TEST_F(ModificationFileLookupTest, AnswersOfEveryShapeAreFlattenedInOrder) {
  struct Case {
    const char* name;
    LoadModules modules;
    int rc;
    std::vector<std::string> before;
    std::vector<std::string> expected;
    const char* logged;
  };
  const Case cases[] = {
      {"appended in order, an empty load module too", {{"/a/1.xml", "/a/2.xml"}, {}, {"/a/1.xml"}}, 0, {"/old.xml"},
       {"/old.xml", "/a/1.xml", "/a/2.xml", "/a/1.xml"}, "Found 4 modification files through LMHI using tag Bt"},
      {"handler error", {{"/never/returned.xml"}}, 3, {"/old.xml"}, {"/old.xml"},
       "Could not get list of modification files from LMHI using tag modification_files, boardType Bt, "
       "return code was 3"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    LogRecorder::installed().clear();
    answer(c.modules, c.rc);
    // A successful answer is handed back once; a failed one holds nothing.
    EXPECT_CALL(env, lmhiFreeBuffers(_)).Times(c.rc == 0 ? 1 : 0);
    std::vector<std::string> files = c.before;

    getModificationFiles(env, "Bt", &files);

    EXPECT_THAT(files, ElementsAreArray(c.expected));
    EXPECT_EQ((std::vector<std::string>{"Getting modification files using tag Bt ", c.logged}),
              LogRecorder::installed().texts());
    testing::Mock::VerifyAndClearExpectations(&env);
  }
}

TEST_F(ModificationFileLookupTest, AFileEntryWithoutPathIsALogicError) {
  answer({{"/a.xml", nullptr}}, 0);
  std::vector<std::string> files;
  EXPECT_THROW(getModificationFiles(env, "Bt", &files), std::logic_error);
  testing::Mock::VerifyAndClearExpectations(&env);
}

}  // namespace
