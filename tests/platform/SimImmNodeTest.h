// What the tests of the simulated conversion tool share: a simulated node in
// a temporary folder with a small old model, and readers of what the tool
// hands out and writes.

#ifndef VOSK_TESTS_PLATFORM_SIM_IMM_NODE_TEST_H
#define VOSK_TESTS_PLATFORM_SIM_IMM_NODE_TEST_H

#include <gtest/gtest.h>

#include <string>
#include <vector>

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
