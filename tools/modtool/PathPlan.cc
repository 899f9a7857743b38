#include "PathPlan.h"

#include <algorithm>

#include "parser/UpgradePathCalculator.h"

namespace modtool {

namespace {

// A schema the node does not have yet starts here.
const char kNoVersion[] = "0_0_0";

PlanStep stepOf(const UpgradePathCalculator& calculator, const std::string& file) {
  PlanStep step{file, "", ""};
  calculator.getFromVersion(file, step.from);
  calculator.getToVersion(file, step.to);
  return step;
}

// Follows the chain with the upgrader's own choice of file at each version
// until it finds no file or comes back to a file.
void followChain(const UpgradePathCalculator& calculator, const std::vector<std::string>& files, PathPlan* plan) {
  std::string current = plan->from;
  while (plan->steps.empty() || current != plan->to) {
    const std::string file = calculator.findFileFrom(files, current);
    if (file.empty()) {
      plan->missingVersion = current;
      return;
    }
    auto used = std::find_if(plan->steps.begin(), plan->steps.end(),
                             [&file](const PlanStep& step) { return step.file == file; });
    if (used != plan->steps.end()) {
      plan->repeatedFile = file;
      return;
    }
    plan->steps.push_back(stepOf(calculator, file));
    current = plan->steps.back().to;
  }
}

}  // namespace

PathPlan PathPlan::make(const std::vector<std::string>& files, const std::string& from, const std::string& to) {
  PathPlan plan;
  plan.from = from;
  plan.to = to;
  UpgradePathCalculator calculator;
  for (const std::string& file : files) {
    PlanStep step = stepOf(calculator, file);
    if (!calculator.getFromVersion(file, step.from)) {
      plan.unusable.push_back({file, "the name is not modification_<from>_to_<to>.xml"});
      continue;
    }
    const std::string first = calculator.findFileFrom(files, step.from);
    if (first != file) {
      plan.unusable.push_back({file, "shadowed: " + first + " starts at " + step.from + " too and comes first"});
    }
  }
  if (from == to) {
    plan.kind = Kind::kSameVersion;
  } else if (from == kNoVersion && calculator.findFileFrom(files, from).empty()) {
    plan.kind = Kind::kNewSchema;
  } else {
    // The path is the upgrader's own; only where it has none is the chain
    // followed again, to tell how far it goes.
    const std::vector<std::string> path = calculator.calculatePath(files, from, to);
    for (const std::string& file : path) plan.steps.push_back(stepOf(calculator, file));
    plan.kind = path.empty() ? Kind::kNoPath : Kind::kPath;
    if (path.empty()) followChain(calculator, files, &plan);
  }
  for (const std::string& file : files) {
    const bool onPath =
        std::any_of(plan.steps.begin(), plan.steps.end(), [&file](const PlanStep& s) { return s.file == file; });
    const bool never = std::any_of(plan.unusable.begin(), plan.unusable.end(),
                                   [&file](const UnusableFile& u) { return u.file == file; });
    if (!onPath && !never) plan.offPath.push_back(file);
  }
  return plan;
}

}  // namespace modtool
