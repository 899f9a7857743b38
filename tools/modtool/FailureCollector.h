// The ICTI handler that `check` gives the modification-file parser in
// validate-only mode: there is no model, and every failure the parser or an
// action reports is kept with the place the parser had set for it
// ("at <file>:<line>, Mo <class>, <action>"), instead of failing an upgrade.

#ifndef VOSK_TOOLS_MODTOOL_FAILURE_COLLECTOR_H
#define VOSK_TOOLS_MODTOOL_FAILURE_COLLECTOR_H

#include <string>
#include <vector>

#include "icti/ModelFreeHandler.h"

namespace modtool {

struct CollectedFailure {
  std::string text;
  std::string context;  // empty when the parser had set none
};

// Class names are judged by the tool's own rules, which know both models:
// the handler counts every class as defined.
class FailureCollector : public ModelFreeHandler {
 public:
  void failUpgrade(const char* message) override { failures_.push_back({message, context_}); }
  void setFailureContext(const std::string& context) override { context_ = context; }
  int failureCount() const override { return static_cast<int>(failures_.size()); }

  const std::string& context() const { return context_; }
  const std::vector<CollectedFailure>& failures() const { return failures_; }

  // The line of a context "at <file>:<line>, ..."; 0 when it names none.
  static long lineOf(const std::string& context, const std::string& file);

 private:
  std::string context_;
  std::vector<CollectedFailure> failures_;
};

}  // namespace modtool

#endif
