#include "WrapperOptions.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ChildEnvironment.h"

namespace wrappersim {
namespace {

bool parse(std::vector<const char*> args, WrapperOptions* options, std::string* error) {
  args.insert(args.begin(), "upgrade-wrapper-sim");
  return WrapperOptions::parse(static_cast<int>(args.size()), args.data(), options, error);
}

WrapperOptions parsed(std::vector<const char*> args) {
  WrapperOptions options;
  std::string error;
  EXPECT_TRUE(parse(args, &options, &error)) << error;
  return options;
}

TEST(WrapperOptionsTest, DefaultsFollowTheNode) {
  WrapperOptions o = parsed({"--node", "/n"});
  EXPECT_EQ("/n/out", o.outFolder());
  EXPECT_EQ("/n/out/upgradeWrapper.sock", o.socketPath());
  EXPECT_EQ(std::vector<std::string>{"/n/out/upgradeWrapper.sock"}, o.programArguments());
  EXPECT_EQ("UPGRADE", o.restartType);
  EXPECT_EQ(120, o.timeoutSeconds);
  EXPECT_FALSE(o.faults);
  EXPECT_FALSE(o.verbose);
}

TEST(WrapperOptionsTest, EveryOptionInBothSpellings) {
  WrapperOptions o = parsed({"--node=/n", "--program", "/p/up", "--package=/pkg", "--out", "/o", "--socket=/s.sock",
                             "--restart-type", "WARM", "--faults=Initialize=31x2", "--timeout", "0.25", "-v",
                             "--env", "BT=VM", "--env=RESTART_TYPE_3", "--args", "@socket extra"});
  EXPECT_EQ("/p/up", o.program);
  EXPECT_EQ("/pkg", o.package);
  EXPECT_EQ("/o", o.outFolder());
  EXPECT_EQ("/s.sock", o.socketPath());
  EXPECT_EQ("WARM", o.restartType);
  EXPECT_EQ("Initialize=31x2", *o.faults);
  EXPECT_EQ(0.25, o.timeoutSeconds);
  EXPECT_TRUE(o.verbose);
  ASSERT_EQ(2u, o.env.size());
  EXPECT_EQ("BT", o.env[0].first);
  EXPECT_EQ("VM", *o.env[0].second);
  EXPECT_EQ("RESTART_TYPE_3", o.env[1].first);
  EXPECT_FALSE(o.env[1].second);
  EXPECT_EQ((std::vector<std::string>{"/s.sock", "extra"}), o.programArguments());
}

TEST(WrapperOptionsTest, ArgsCanGiveAnyArgumentCount) {
  EXPECT_TRUE(parsed({"--node", "/n", "--args", ""}).programArguments().empty());
  EXPECT_EQ((std::vector<std::string>{"a", "b", "c"}), parsed({"--node", "/n", "--args", " a  b c "}).programArguments());
}

TEST(WrapperOptionsTest, RelativeSocketBecomesAbsolute) {
  std::string socket = parsed({"--node", "n"}).socketPath();
  EXPECT_EQ('/', socket[0]);
  EXPECT_NE(std::string::npos, socket.find("/n/out/upgradeWrapper.sock"));
}

struct BadCase {
  std::vector<const char*> args;
  const char* error;
};

void PrintTo(const BadCase& c, std::ostream* out) { *out << c.error; }

class WrapperOptionsErrorTest : public testing::TestWithParam<BadCase> {};

TEST_P(WrapperOptionsErrorTest, RefusedWithReason) {
  WrapperOptions options;
  std::string error;
  EXPECT_FALSE(parse(GetParam().args, &options, &error));
  EXPECT_EQ(GetParam().error, error);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, WrapperOptionsErrorTest,
    testing::Values(BadCase{{}, "--node is required"},
                    BadCase{{"--node"}, "option --node needs a value"},
                    BadCase{{"--node", "/n", "--colour", "red"}, "unknown option --colour"},
                    BadCase{{"--node", "/n", "stray"}, "unexpected argument 'stray'"},
                    BadCase{{"--node", "/n", "--timeout", "0"}, "--timeout needs a positive number of seconds, not '0'"},
                    BadCase{{"--node", "/n", "--timeout", "5s"},
                            "--timeout needs a positive number of seconds, not '5s'"},
                    BadCase{{"--node", "/n", "--env", "=x"}, "--env needs NAME=VALUE or NAME, not '=x'"}));

TEST(WrapperOptionsTest, UsageNamesEveryOption) {
  std::string usage = WrapperOptions::usage();
  for (const char* option : {"--node", "--package", "--program", "--out", "--socket", "--restart-type", "--env",
                             "--faults", "--args", "--timeout", "--verbose", "--help"}) {
    EXPECT_NE(std::string::npos, usage.find(option)) << option;
  }
}

std::string value(const ChildEnvironment& environment, const std::string& name) {
  std::string result;
  return environment.get(name, &result) ? result : "<unset>";
}

TEST(ChildEnvironmentTest, WrapperDecidesPackageNodeRestartIdentityAndFaults) {
  WrapperOptions o = parsed({"--node", "/n", "--package", "/pkg/"});
  ChildEnvironment environment({"PATH=/bin", "WPK_PATH=/stale", "VOSK_SIM_FAULTS=Initialize=2", "WMT_NAME=mine",
                                "RESTART_TYPE_3=DYNAMIC_UPGRADE"},
                               o);
  EXPECT_EQ("/bin", value(environment, "PATH"));
  EXPECT_EQ("/pkg/", value(environment, "WPK_PATH"));
  EXPECT_EQ("/n", value(environment, "VOSK_SIM_ROOT"));
  EXPECT_EQ("/n/out", value(environment, "VOSK_SIM_OUT"));
  EXPECT_EQ("UPGRADE", value(environment, "RESTART_TYPE"));
  EXPECT_EQ("DYNAMIC_UPGRADE", value(environment, "RESTART_TYPE_3"));
  EXPECT_EQ("<unset>", value(environment, "VOSK_SIM_FAULTS"));
  for (const auto& identity : ChildEnvironment::identityDefaults()) {
    EXPECT_EQ(identity.second, value(environment, identity.first)) << identity.first;
  }
  EXPECT_EQ(6u, ChildEnvironment::identityDefaults().size());
}

TEST(ChildEnvironmentTest, NoPackageLeavesWpkPathUnset) {
  ChildEnvironment environment({"WPK_PATH=/stale"}, parsed({"--node", "/n"}));
  EXPECT_EQ("<unset>", value(environment, "WPK_PATH"));
}

TEST(ChildEnvironmentTest, EnvSettingsComeLastInCommandLineOrder) {
  WrapperOptions o = parsed({"--node", "/n", "--faults", "LogInitialize=2", "--restart-type", "WARM", "--env",
                             "WMT_NAME=other", "--env", "RESTART_TYPE", "--env", "X=1", "--env", "X=2", "--env",
                             "VOSK_SIM_OUT=/elsewhere"});
  ChildEnvironment environment({}, o);
  EXPECT_EQ("other", value(environment, "WMT_NAME"));
  EXPECT_EQ("<unset>", value(environment, "RESTART_TYPE"));
  EXPECT_EQ("2", value(environment, "X"));
  EXPECT_EQ("/elsewhere", value(environment, "VOSK_SIM_OUT"));
  EXPECT_EQ("LogInitialize=2", value(environment, "VOSK_SIM_FAULTS"));
  std::vector<std::string> entries = environment.entries();
  EXPECT_NE(entries.end(), std::find(entries.begin(), entries.end(), "X=2"));
}

}  // namespace
}  // namespace wrappersim
