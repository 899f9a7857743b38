#include "WrapperOptions.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "ChildEnvironment.h"

namespace wrappersim {
namespace {

// Parses `args` after the program name; the options in one line, or "error: <reason>".
std::string parsed(std::vector<const char*> args, WrapperOptions* options) {
  args.insert(args.begin(), "upgrade-wrapper-sim");
  std::string error;
  if (!WrapperOptions::parse(static_cast<int>(args.size()), args.data(), options, &error)) return "error: " + error;
  const WrapperOptions& o = *options;
  std::string text = "program=" + o.program + " package=" + o.package + " out=" + o.outFolder() +
                     " socket=" + o.socketPath() + " restart=" + o.restartType + " faults=" + o.faults.value_or("-") +
                     " timeout=" + std::to_string(o.timeoutSeconds) + (o.verbose ? " verbose" : "") + " env=";
  for (const auto& [name, value] : o.env) text += name + (value ? "=" + *value : "") + ";";
  text += " args=";
  for (const std::string& argument : o.programArguments()) text += "[" + argument + "]";
  return text;
}

TEST(WrapperOptionsTest, ParsesEveryOptionOrRefusesWithReason) {
  const std::string cwd = std::filesystem::current_path().string();
  const struct {
    std::vector<const char*> args;
    std::string expected;
  } cases[] = {
      {{"--node", "/n"},
       "program= package= out=/n/out socket=/n/out/upgradeWrapper.sock restart=UPGRADE faults=- timeout=120.000000 "
       "env= args=[/n/out/upgradeWrapper.sock]"},
      {{"--node=/n", "--program", "/p/up", "--package=/pkg", "--out", "/o", "--socket=/s.sock", "--restart-type",
        "WARM", "--faults=Initialize=31x2", "--timeout", "0.25", "-v", "--env", "BT=VM", "--env=RESTART_TYPE_3",
        "--args", "@socket extra"},
       "program=/p/up package=/pkg out=/o socket=/s.sock restart=WARM faults=Initialize=31x2 timeout=0.250000 "
       "verbose env=BT=VM;RESTART_TYPE_3; args=[/s.sock][extra]"},
      {{"--node", "n", "--args", " a  b c "},
       "program= package= out=n/out socket=" + cwd + "/n/out/upgradeWrapper.sock restart=UPGRADE faults=- "
       "timeout=120.000000 env= args=[a][b][c]"},
      {{"--node", "/n", "--args", ""},
       "program= package= out=/n/out socket=/n/out/upgradeWrapper.sock restart=UPGRADE faults=- timeout=120.000000 "
       "env= args="},
      {{}, "error: --node is required"},
      {{"--node"}, "error: option --node needs a value"},
      {{"--node", "/n", "--colour", "red"}, "error: unknown option --colour"},
      {{"--node", "/n", "stray"}, "error: unexpected argument 'stray'"},
      {{"--node", "/n", "--timeout", "0"}, "error: --timeout needs a positive number of seconds, not '0'"},
      {{"--node", "/n", "--timeout", "5s"}, "error: --timeout needs a positive number of seconds, not '5s'"},
      {{"--node", "/n", "--env", "=x"}, "error: --env needs NAME=VALUE or NAME, not '=x'"},
  };
  for (const auto& c : cases) {
    WrapperOptions options;
    EXPECT_EQ(c.expected, parsed(c.args, &options));
  }
  std::string usage = WrapperOptions::usage();
  for (const char* option : {"--node", "--package", "--program", "--out", "--socket", "--restart-type", "--env",
                             "--faults", "--args", "--timeout", "--verbose", "--help"}) {
    EXPECT_NE(std::string::npos, usage.find(option)) << option;
  }
}

TEST(ChildEnvironmentTest, WrapperDecidesPackageNodeRestartIdentityAndFaultsThenEnvInCommandLineOrder) {
  const struct {
    std::vector<const char*> args;
    std::vector<std::string> inherited;
    std::map<std::string, std::string> expected;
  } cases[] = {
      {{"--node", "/n", "--package", "/pkg/"},
       {"PATH=/bin", "WPK_PATH=/stale", "VOSK_SIM_FAULTS=Initialize=2", "WMT_NAME=mine", "RESTART_TYPE_3=DYNAMIC"},
       {{"PATH", "/bin"}, {"WPK_PATH", "/pkg/"}, {"VOSK_SIM_ROOT", "/n"}, {"VOSK_SIM_OUT", "/n/out"},
        {"RESTART_TYPE", "UPGRADE"}, {"RESTART_TYPE_3", "DYNAMIC"}, {"VOSK_SIM_FAULTS", "<unset>"},
        {"WMT_NAME", "voskOamUpgrader"}, {"WMT_NO", "CXC1740923"}, {"WMT_REV", "R4A12"}, {"UP_NO", "CXP9024418_6"},
        {"UP_REV", "R21B"}, {"WPK_REV", "R4A12"}}},
      {{"--node", "/n"}, {"WPK_PATH=/stale"}, {{"WPK_PATH", "<unset>"}}},
      {{"--node", "/n", "--faults", "LogInitialize=2", "--restart-type", "WARM", "--env", "WMT_NAME=other", "--env",
        "RESTART_TYPE", "--env", "X=1", "--env", "X=2", "--env", "VOSK_SIM_OUT=/elsewhere"},
       {},
       {{"WMT_NAME", "other"}, {"RESTART_TYPE", "<unset>"}, {"X", "2"}, {"VOSK_SIM_OUT", "/elsewhere"},
        {"VOSK_SIM_FAULTS", "LogInitialize=2"}}},
  };
  for (const auto& c : cases) {
    WrapperOptions options;
    ASSERT_EQ(0u, parsed(c.args, &options).find("program="));
    ChildEnvironment environment(c.inherited, options);
    std::vector<std::string> entries = environment.entries();
    for (const auto& [name, value] : c.expected) {
      std::string found;
      EXPECT_EQ(value, environment.get(name, &found) ? found : "<unset>") << name;
      EXPECT_EQ(value != "<unset>", std::find(entries.begin(), entries.end(), name + "=" + value) != entries.end())
          << name;
    }
  }
}

}  // namespace
}  // namespace wrappersim
