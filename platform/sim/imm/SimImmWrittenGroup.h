// Turns an instance-group record handed to a write call into objects in
// their IMM XML form, checking the records on the way. The dn of each object
// is rebuilt from its naming attribute's first value and its parent's name,
// by the naming conventions of SimImmObject.
//
// The naming attribute is the one the class definition names; without a
// definition, an attribute named after the class (first letter lower-cased,
// then "Id") or "id". With `strict` (the node has a new model) the class
// must be defined and every attribute must be defined with the type given.

#ifndef VOSK_SIM_SIM_IMM_WRITTEN_GROUP_H
#define VOSK_SIM_SIM_IMM_WRITTEN_GROUP_H

#include <functional>
#include <string>

#include "SimImmClass.h"
#include "SimImmObject.h"
#include "safcImmCt.h"

class SimImmWrittenGroup {
 public:
  // `definition` may be null (class defined nowhere); `strict` then refuses.
  SimImmWrittenGroup(const SimImmClass* definition, bool strict) : definition_(definition), strict_(strict) {}

  // Hands the objects of `group` to `each`, one at a time, in record order.
  // False, with `why` set, when a record is incomplete, a value invalid, or
  // (strict) the records do not fit the class definition; two objects with
  // one dn are refused too. Objects handed over before a failure are not
  // taken back.
  bool toObjects(const SafcImmCtInstanceGroupT& group, const std::function<void(const SimImmObject&)>& each,
                 std::string* why) const;

 private:
  bool toObject(const std::string& className, const SafcImmCtInstanceT& instance, SimImmObject* object,
                std::string* why) const;
  bool toValues(const std::string& className, const SaImmAttrValuesT_2& attr, SimImmAttrValues* values,
                std::string* why) const;
  bool isNamingAttribute(const std::string& className, const std::string& attrName) const;

  const SimImmClass* definition_;
  const bool strict_;
};

#endif
