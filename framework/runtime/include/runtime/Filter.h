// The instance filter of an action, read from the action's arguments on
// every call (nothing is cached, so a filter is cheap to build):
//
//   ldnValue           the instance's distinguished name must equal it
//   rdnValue           the value part of the instance's RDN must equal it
//   parentName         the instance's parent name must equal it
//   oldAttributeValue  the value at the asked position of the attribute
//                      named by the argument `name` must equal it, compared
//                      by the attribute's type; an instance without that
//                      attribute passes. A text that is no number of a
//                      numeric attribute's type applies nowhere and is kept
//                      as the filter's failure, for the action to report.
//
// Tests run in this order and only for the arguments present; comparisons
// of names are exact and case-sensitive. Without any of them every
// instance and position applies.

#ifndef VOSK_RUNTIME_FILTER_H
#define VOSK_RUNTIME_FILTER_H

#include <string>

#include "runtime/ActionArgumentsIf.h"
#include "runtime/FilterIf.h"

class Filter : public FilterIf {
 public:
  // `args` must outlive the filter.
  explicit Filter(ActionArgumentsIf* args) : args_(args) {}

  bool applies(InstanceIf& instance, unsigned int index) override;

  // Why the filter could not be judged (its old value does not fit the
  // attribute); empty when it always could.
  const std::string& failure() const { return failure_; }

 private:
  ActionArgumentsIf* args_;
  std::string failure_;
};

#endif
