// `check` on broken files, one fault each: the finding's line, kind and
// text, judged against the bundled example's old and new models.

#include <gtest/gtest.h>

#include <string>

#include "ClassCatalog.h"
#include "FileChecker.h"
#include "TempDir.h"

namespace modtool {
namespace {

using Severity = Diagnostic::Severity;

struct BrokenFile {
  const char* fault;
  const char* body;  // lines 2.. of the file, inside <modifications>
  long line;
  Severity severity;
  const char* text;  // a part of the finding's text
};

const BrokenFile kBrokenFiles[] = {
    {"MisspeltAction", R"(  <Mo name="SectorCarrier">
    <MoAction name="RenameAtributeAction">
      <Arg name="name" value="configuredMaxTxPower"/>
    </MoAction>
  </Mo>)",
     3, Severity::kError, "Unsupported action: RenameAtributeAction (did you mean RenameAttributeAction?)"},
    {"ArgTheActionDoesNotRead", R"(  <Mo name="EUtranCellFDD">
    <MoAction name="AddAttributeAction">
      <Arg name="name" value="primaryPlmnReserved"/>
      <Arg name="typ" value="SA_INT32_T"/>
      <Arg name="defaultValue" value="0"/>
    </MoAction>
  </Mo>)",
     5, Severity::kError, "takes no Arg typ; the closest it takes is type"},
    {"ClassNoModelDefines", R"(  <Mo name="EUtranCelFDD">
    <MoAction name="RemoveAttributeAction">
      <Arg name="name" value="tac"/>
    </MoAction>
  </Mo>)",
     2, Severity::kError,
     "Mo EUtranCelFDD names a class that neither the old nor the new model defines (did you mean EUtranCellFDD?)"},
    {"AttributeNoModelDefines", R"(  <Mo name="SectorCarrier">
    <MoAction name="SetAttributeValueAction">
      <Arg name="name" value="noOfTxAntenas"/>
      <Operation operator="=" value="2"/>
    </MoAction>
  </Mo>)",
     4, Severity::kError,
     "neither the old nor the new model defines attribute noOfTxAntenas of SectorCarrier (did you mean "
     "noOfTxAntennas?)"},
    {"AddedAttributeTheNewModelLacks", R"(  <Mo name="EUtranCellFDD">
    <MoAction name="AddAttributeAction">
      <Arg name="name" value="primaryPlmnReservd"/>
      <Arg name="type" value="SA_INT32_T"/>
      <Arg name="defaultValue" value="0"/>
    </MoAction>
  </Mo>)",
     4, Severity::kError, "the new model does not define attribute primaryPlmnReservd of EUtranCellFDD"},
    {"TypeThatDoesNotFit", R"(  <Mo name="EUtranCellFDD">
    <MoAction name="AddAttributeAction">
      <Arg name="name" value="primaryPlmnReserved"/>
      <Arg name="type" value="SA_STRING_T"/>
      <Arg name="defaultValue" value="0"/>
    </MoAction>
  </Mo>)",
     5, Severity::kError,
     "type SA_STRING_T does not fit attribute primaryPlmnReserved, which the model defines as SA_INT32_T"},
    {"NumberThatDoesNotParse", R"(  <Mo name="SectorCarrier">
    <MoAction name="SetAttributeValueAction">
      <Arg name="name" value="noOfTxAntennas"/>

      <Operation operator="=" value="4x"/>
    </MoAction>
  </Mo>)",
     6, Severity::kError, "Operation value 4x is no SA_INT32_T value of attribute noOfTxAntennas"},
    {"DeleteOfAClassTheNewModelKeeps", R"(  <Mo name="SectorCarrier">
    <MoAction name="DeleteMoTypeAction"/>
  </Mo>)",
     3, Severity::kWarning, "the new model still defines class SectorCarrier"},
    {"RenameToAClassTheNewModelLacks", R"(  <Mo name="CellSleepProfile">
    <MoAction name="RenameMoTypeAction">
      <Arg name="name" value="CellSleepProfile"/>
      <Arg name="newName" value="SleepProfile"/>
    </MoAction>
  </Mo>)",
     5, Severity::kError, "the new model does not define class SleepProfile, the target of the rename"},
    {"ActionAfterADeleteInTheSameMo", R"(  <Mo name="CellSleepProfile">
    <MoAction name="DeleteMoTypeAction"/>
    <MoAction name="RemoveAttributeAction">
      <Arg name="name" value="sleepMode"/>
    </MoAction>
  </Mo>)",
     4, Severity::kError, "RemoveAttributeAction follows DeleteMoTypeAction of CellSleepProfile in the same Mo"},
};

class CheckTest : public ::testing::TestWithParam<BrokenFile> {
 protected:
  static void SetUpTestSuite() {
    std::string why;
    const std::string examples = EXAMPLES_DIR;
    ASSERT_TRUE(catalog_.addFile(ClassCatalog::Model::kNew,
                                 examples + "/package/share/models/RadioNode/imm/RadioNode_imm_classes.xml", &why));
    ASSERT_TRUE(catalog_.addFile(ClassCatalog::Model::kOld, examples + "/node/imm/old/RadioNode.xml", &why));
  }

  static ClassCatalog catalog_;
  TempDir dir_;
};

ClassCatalog CheckTest::catalog_;

TEST_P(CheckTest, FindsTheFaultOnItsLine) {
  const BrokenFile& broken = GetParam();
  const std::string file = dir_.write("modification_1_0_0_to_1_1_0.xml",
                                      std::string("<modifications>\n") + broken.body + "\n</modifications>\n");
  ClassCatalog catalog = catalog_;  // what one case introduces stays there
  const Diagnostics found = FileChecker(&catalog).check(file);
  ASSERT_EQ(found.size(), 1u) << broken.fault << ": " << (found.empty() ? "" : found[0].toText());
  EXPECT_EQ(found[0].line, broken.line) << broken.fault;
  EXPECT_GT(found[0].column, 0) << broken.fault;
  EXPECT_EQ(found[0].severity, broken.severity) << broken.fault;
  EXPECT_NE(found[0].text.find(broken.text), std::string::npos) << broken.fault << ": " << found[0].text;
}

INSTANTIATE_TEST_SUITE_P(BrokenFiles, CheckTest, ::testing::ValuesIn(kBrokenFiles),
                         [](const ::testing::TestParamInfo<BrokenFile>& info) {
                           return std::string(info.param.fault);
                         });

TEST(CheckFileNameTest, NameWithoutVersionsIsNeverUsed) {
  TempDir dir;
  const std::string file = dir.write("cells.xml", "<modifications/>\n");
  ClassCatalog none;
  const Diagnostics found = FileChecker(&none).check(file);
  ASSERT_EQ(found.size(), 1u);
  EXPECT_EQ(found[0].severity, Severity::kWarning);
  EXPECT_NE(found[0].text.find("no conversion path ever uses this file"), std::string::npos);
}

}  // namespace
}  // namespace modtool
