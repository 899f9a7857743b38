#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "MockIctiHandler.h"
#include "MockInstanceGroup.h"
#include "MockUpgradeAction.h"
#include "TempDir.h"
#include "parser/XmlHandler.h"

using testing::_;
using testing::NiceMock;
using testing::Return;

namespace {

using Calls = std::vector<std::string>;

// Parses modification files against registered recording actions and a
// handler whose group of a class knows its class name. A call is recorded as
// "action@class: arguments | operation...", the class empty for a null group.
class XmlHandlerTest : public testing::Test {
 protected:
  void SetUp() override {
    ON_CALL(handler, getInstanceGroup(_, _, _))
        .WillByDefault([this](const std::string& name, const std::string&, bool) {
          MockInstanceGroup& group = groups[name];
          ON_CALL(group, getClassName()).WillByDefault(Return(name));
          return &group;
        });
    ON_CALL(handler, failUpgrade(_)).WillByDefault([this](const char* reason) {
      reported.push_back(reason);
      ++failures;
    });
    ON_CALL(handler, failureCount()).WillByDefault([this] { return failures; });
    ON_CALL(handler, classDefined(_)).WillByDefault(Return(true));
    for (const char* name : {"Bump", "Rename", "Fails"}) {
      const bool succeeds = std::string(name) != "Fails";
      auto action = std::make_unique<NiceMock<MockUpgradeAction>>(name);
      // Rename names the arguments it reads; the others take any.
      if (std::string(name) == "Rename") {
        ON_CALL(*action, argumentNames()).WillByDefault(Return(std::vector<std::string>{"newName", "structAttr#"}));
      }
      ON_CALL(*action, execute(_, _, _))
          .WillByDefault([this, name, succeeds](IctiHandlerIf* h, InstanceGroupIf* g, ActionArgumentsIf& a) {
            EXPECT_EQ(&handler, h);
            return record(name, g, a), succeeds;
          });
      ON_CALL(*action, validateArgs(_, _)).WillByDefault([this, name, succeeds](ActionArgumentsIf& a, IctiHandlerIf*) {
        return record(name, nullptr, a), succeeds;
      });
      ASSERT_TRUE(parser.addAction(action.get()));
      actions[name] = std::move(action);
    }
  }

  void record(const std::string& name, InstanceGroupIf* group, ActionArgumentsIf& args) {
    std::string call = name + "@" + (group == nullptr ? "" : group->getClassName()) + ": " + args.argumentsToString();
    for (OperationArgumentIf* operation : args.getOperations()) call += std::string(" | ") + operation->toString();
    calls.push_back(call);
  }

  bool parse(const std::string& content, bool validateOnly = false) {
    file = dir.write("modification_1_0_0_to_2_0_0.xml", content);
    return parser.parseModificationFile(file.c_str(), validateOnly);
  }

  TempDir dir;
  std::string file;
  NiceMock<MockIctiHandler> handler;
  std::map<std::string, NiceMock<MockInstanceGroup>> groups;
  std::map<std::string, std::unique_ptr<NiceMock<MockUpgradeAction>>> actions;
  XmlHandler parser{&handler};
  Calls calls;
  std::vector<std::string> reported;
  int failures = 0;
};

TEST_F(XmlHandlerTest, MoElementsAtAnyDepthRunInDocumentOrder) {
  EXPECT_CALL(handler, getInstanceGroup("A", "", false));
  // Each action sees the class as it is when it starts.
  EXPECT_CALL(handler, getInstanceGroup("B", "", false)).Times(2);
  EXPECT_CALL(handler, getInstanceGroup("C", "", false));
  EXPECT_CALL(handler, failUpgrade(_)).Times(0);

  EXPECT_TRUE(parse(R"(<?xml version="1.0"?>
<modifications version="2">
  <!-- comment -->
  <Mo name="A"><MoAction name="Bump"><Arg name="x" value="1"/></MoAction></Mo>
  <group><deeper><Mo name="B"><MoAction name="Rename"/><MoAction name="Bump"/></Mo></deeper></group>
  <Mo name="C"><Mo name="Ignored"><MoAction name="Bump"/></Mo><Other><MoAction name="Bump"/></Other></Mo>
</modifications>)"));
  EXPECT_EQ(Calls({"Bump@A: x=1", "Rename@B: ", "Bump@B: "}), calls);
}

// Every operation attribute reaches its field; an empty one stays unset, but for the namespace.
TEST_F(XmlHandlerTest, ArgumentsAndOperationsReachTheAction) {
  EXPECT_TRUE(parse(R"(<Mods><Mo name="A"><MoAction name="Bump">
    <Arg name="name" value="counter"/>
    <!-- between arguments -->
    <Operation rangeStart="a" rangeEnd="b" operator="c" value="d" valueFromAttr="e" valueFromInstance="f"
      structType="g" valueFromMoTypeAnyInstance="h" valueFromTypeRefOnlyInstance="i" valueFromParentInstance="j"
      valueFromBitmapStringAttr="k" valueFromInstanceReferencedBy="l" valueFromImmNamespace="m"
      valueFromSingleAttr="n" valueFromMoTypeAnyChildInstance="o"/>
    <Arg name="ldnValue" value="aId=1"/>
    <Operation operator="+" valueFromAttr="other" valueFromImmNamespace="" value=""/>
  </MoAction></Mo></Mods>)"));
  EXPECT_EQ(Calls({"Bump@A: ldnValue=aId=1, name=counter | range: atob => (c) value: d valueFromAttr: e "
                   "valueFromInstance: f valueFromParentInstance: j valueFromInstanceReferencedBy: l structType: g "
                   "valueFromMoTypeAnyInstance: h valueFromImmTypeRefOnlyInstance: i valueFromImmNamespace: m "
                   "valueFromSingleAttr: n valueFromMoTypeAnyChildInstance: o |  => (+) valueFromAttr: other "
                   "valueFromImmNamespace: "}),
            calls);
}

// Every rejection is reported with what to change; the rest of the faulty `Mo` is skipped, the next `Mo` still runs.
// The suggestions for a misspelt action or Arg are modtool's (CheckTest).
TEST_F(XmlHandlerTest, RejectionsFailTheFileButLaterMoElementsStillRun) {
  const struct {
    const char* firstMo;    // faulty
    const char* reported;   // the failure reason
    const char* printed;    // standard output
    const char* firstCall;  // what still runs in it, if anything
  } cases[] = {
      {R"(<Mo name="A"><MoAction name="Fails"/><MoAction name="Bump"/><MoAction name="NoSuchAction"/></Mo>)",
       "Action Fails failed!", "", "Fails@A: "},
      {R"(<Mo name="Nowhere"><MoAction name="Bump"/></Mo>)",
       "Mo Nowhere names a class that neither the old nor the new model defines", "", nullptr},
      {R"(<Mo name="A" version="2"><MoAction name="Bump"/></Mo>)", "properties->name=version. Should be \"name\".",
       "", "Bump@A: "},
      {R"(<Mo name="A"><MoAction name="Bump" when="now"/></Mo>)", "properties->name=when. Should be \"name\".", "",
       nullptr},
      {R"(<Mo name="A"><MoAction name="Bump"><Arg name="n" value="v" extra="1"/></MoAction></Mo>)",
       "Unrecognized property: extra=1", "", nullptr},
      {R"(<Mo name="A"><MoAction name="Bump"><Arg name="n"/></MoAction></Mo>)", "Arg without value property", "",
       nullptr},
      {R"(<Mo name="A"><MoAction name="Bump"><Argument name="n" value="v"/></MoAction></Mo>)",
       "NODE_NAME: Argument not handled", "NODE_NAME: Argument not handled\n", nullptr},
      {R"(<Mo name="A"><MoAction name="Bump"><Arg name="n" value="1"/><Arg name="n" value="2"/></MoAction></Mo>)",
       "Arg n is given twice", "", nullptr},
      {R"(<Mo name="A"><MoAction name="SpecialActionX"/></Mo>)", "Unsupported action: SpecialActionX", "", nullptr},
      {R"(<Mo name="A"><MoAction name="Bump"><Operation operator="=" vaule="x"/></MoAction></Mo>)",
       "Operation takes no attribute vaule (did you mean value?)", "", nullptr},
      {R"(<Mo name="A"><MoAction name="Rename"><Arg name="structAttr" value="x"/></MoAction></Mo>)",
       "Rename takes no Arg structAttr; the closest it takes is structAttr1", "", nullptr},
  };
  ON_CALL(handler, getInstanceGroup("Nowhere", "", false)).WillByDefault(Return(nullptr));
  ON_CALL(handler, classDefined("Nowhere")).WillByDefault(Return(false));
  for (const auto& c : cases) {
    SCOPED_TRACE(c.firstMo);
    calls.clear();
    reported.clear();
    testing::internal::CaptureStdout();
    const bool result =
        parse(std::string("<Mods>") + c.firstMo + R"(<Mo name="Next"><MoAction name="Rename"/></Mo></Mods>)");
    EXPECT_EQ(c.printed, testing::internal::GetCapturedStdout());
    EXPECT_FALSE(result);
    EXPECT_EQ(c.firstCall ? Calls({c.firstCall, "Rename@Next: "}) : Calls({"Rename@Next: "}), calls);
    ASSERT_EQ(1u, reported.size());
    EXPECT_EQ(0u, reported[0].find(c.reported)) << reported[0];
  }
  // Numbered names take any number.
  calls.clear();
  EXPECT_TRUE(parse(R"(<Mo name="A"><MoAction name="Rename"><Arg name="structAttr12" value="x"/></MoAction></Mo>)"));
  EXPECT_EQ(Calls({"Rename@A: structAttr12=x"}), calls);
}

// Where a reason comes from follows it: the file, the line of the
// `MoAction`, the class and the action.
TEST_F(XmlHandlerTest, FailuresCarryTheirPlace) {
  EXPECT_CALL(handler, setFailureContext("at " + dir.path() + "/modification_1_0_0_to_2_0_0.xml:3, Mo A, Fails"));
  EXPECT_CALL(handler, setFailureContext("at " + dir.path() + "/modification_1_0_0_to_2_0_0.xml:2, Mo A"));
  EXPECT_CALL(handler, setFailureContext("")).Times(testing::AtLeast(1));
  EXPECT_FALSE(parse("<Mods>\n<Mo name=\"A\">\n<MoAction name=\"Fails\"/></Mo></Mods>"));
  // An action that fails without a reason of its own gets one.
  EXPECT_EQ(std::vector<std::string>{"Action Fails failed!"}, reported);
}

TEST_F(XmlHandlerTest, MoWithoutNameOrGroupRunsItsActionsWithoutGroup) {
  EXPECT_CALL(handler, getInstanceGroup("Gone", "", false)).WillOnce(Return(nullptr));
  EXPECT_TRUE(parse(R"(<Mods><Mo><MoAction name="Bump"/></Mo><Mo name=""><MoAction name="Rename"/></Mo>
    <Mo name="Gone"><MoAction name="Bump"/></Mo></Mods>)"));
  EXPECT_EQ(Calls({"Bump@: ", "Rename@: ", "Bump@: "}), calls);
}

TEST_F(XmlHandlerTest, ValidateOnlyChecksArgumentsWithoutInstances) {
  EXPECT_CALL(handler, getInstanceGroup(_, _, _)).Times(0);
  for (auto& action : actions) EXPECT_CALL(*action.second, execute(_, _, _)).Times(0);
  EXPECT_TRUE(parse(R"(<Mods><Mo name="A"><MoAction name="Bump"><Arg name="b" value="2"/></MoAction>
    <MoAction name="SpecialActionOfTheClient"/><MoAction name="Rename"/></Mo></Mods>)",
                    true));
  EXPECT_EQ(Calls({"Bump@: b=2", "Rename@: "}), calls);

  calls.clear();
  EXPECT_FALSE(parse(R"(<Mods><Mo name="A"><MoAction name="Fails"/><MoAction name="Bump"/></Mo>
    <Mo name="B"><MoAction name="Special"/></Mo><Mo name="C"><MoAction name="Rename"/></Mo></Mods>)",
                     true));
  EXPECT_EQ(Calls({"Fails@: ", "Rename@: "}), calls);
  EXPECT_EQ(std::vector<std::string>{"Unsupported action: Special"}, reported);
}

}  // namespace
