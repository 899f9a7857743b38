#include "WrapperOptions.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

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
}

}  // namespace
}  // namespace wrappersim
