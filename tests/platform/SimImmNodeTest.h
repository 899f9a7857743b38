// What the tests of the simulated conversion tool share: a simulated node in
// a temporary folder with a small old model, builders for the records handed
// to write calls, and readers of what the tool hands out and writes.

#ifndef VOSK_TESTS_PLATFORM_SIM_IMM_NODE_TEST_H
#define VOSK_TESTS_PLATFORM_SIM_IMM_NODE_TEST_H

#include <gtest/gtest.h>

#include <deque>
#include <string>
#include <vector>

#include "SimImmArena.h"
#include "SimImmObject.h"
#include "TempDir.h"
#include "safcImmCt.h"

// Classes Top (naming attribute topId, a string; i32 with a default, u32, a
// string s and an SA_ANY_T a), Child (childId, a name) and Empty (no
// objects); objects topId=1, childId=a\,b,topId=1 and childId=2,topId=1.
extern const char kOldDump[];

// An IMM XML document with `body` inside the root element.
std::string immXml(const std::string& body);

// Objects of class Empty, two lines each, filling `lines` lines (an even
// number): what follows them starts that many lines further down its file.
std::string filler(int lines);

// Records of one class to hand to a write call.
class GroupBuilder {
 public:
  explicit GroupBuilder(const char* className);
  // Starts an object below `parent` (null: a root object).
  GroupBuilder& object(const char* parent);
  // Adds an attribute with `texts` as values (parsed for `type`, an
  // SA_IMM_ATTR_* code or any other number).
  GroupBuilder& attr(const char* name, SaUint32T type, const std::vector<std::string>& texts);
  // A null-terminated array holding this group; valid as long as the builder,
  // which takes no more objects after this.
  SafcImmCtInstanceGroupT** groups();

 private:
  SimImmArena arena_;
  SafcImmCtInstanceGroupT group_{};
  std::deque<std::vector<SaImmAttrValuesT_2*>> attrs_;
  std::vector<SafcImmCtInstanceT*> instances_;
  SafcImmCtInstanceGroupT* groups_[2] = {&group_, nullptr};
};

// The objects of `groups` as lines "<parent>|<attr>:<type>=<v1>;<v2>|...".
std::vector<std::string> describe(SafcImmCtInstanceGroupT** groups);

// The objects of an IMM XML file, in file order (fails the test when the
// file does not read).
std::vector<SimImmObject> objectsIn(const std::string& path);

class SimImmCtTest : public testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  SafcImmCtHandleT open();
  // Opens a session for schema `schema` (listed in versions).
  SafcImmCtHandleT openSchema(const char* schema);
  std::string out(const std::string& relative) const { return node.path() + "/out/" + relative; }
  // The lines of platform-errors.log.
  std::vector<std::string> errors() const { return TempDir::lines(out("platform-errors.log")); }
  // Whether a line of platform-errors.log contains all of `parts`.
  bool recorded(const std::vector<std::string>& parts) const;

  TempDir node;
};

#endif
