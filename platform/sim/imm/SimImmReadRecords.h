// The records that one safcImmCtReadInstances_2 call hands out, built one
// object at a time as the objects are decoded: a null-terminated array with
// one instance group holding the objects of one class, each object with its
// parent's name and its attributes, the naming attribute first (its value
// taken from the object's dn, by the naming conventions of SimImmObject).
// Values lie in the layout of their type. Everything lives in one arena and
// goes with it.

#ifndef VOSK_SIM_SIM_IMM_READ_RECORDS_H
#define VOSK_SIM_SIM_IMM_READ_RECORDS_H

#include <string>
#include <unordered_map>
#include <vector>

#include "SimImmArena.h"
#include "SimImmClass.h"
#include "SimImmObject.h"
#include "safcImmCt.h"

class SimImmReadRecords {
 public:
  // Records of objects of `cls`, which must outlive them.
  explicit SimImmReadRecords(const SimImmClass& cls) : cls_(cls) {}

  // Adds the record of `object`, of the class, after those added before.
  // False, with `why` set, when the object does not fit its class: a
  // malformed dn, a whole RDN that a naming attribute of another type than
  // SA_STRING_T or SA_NAME_T cannot hold, an attribute the class does not
  // define, or a value that does not parse for its type.
  bool add(const SimImmObject& object, std::string* why);

  // The groups holding the records added; called once, after the last add.
  SafcImmCtInstanceGroupT** finish();

  // Whether `object` fits `cls` by the same checks as add(), which set
  // `why` alike when it does not. Keeps nothing: copies check each object
  // this way as they stream past.
  static bool fits(const SimImmClass& cls, const SimImmObject& object, std::string* why);

 private:
  // Builds one object's record; on failure `why` names the object and line.
  bool buildInstance(const SimImmObject& object, SafcImmCtInstanceT* instance, std::string* why);
  bool fillInstance(const SimImmObject& object, SafcImmCtInstanceT* instance, std::string* why);
  // An attribute's record with room for `count` value pointers.
  SaImmAttrValuesT_2* shapeAttr(const SimImmAttrDef& def, size_t count);
  // Parses the values into the record's value pointers.
  bool fillValues(const SimImmAttrDef& def, const std::vector<SimImmValue>& values, SaImmAttrValuesT_2* attr,
                  std::string* why);
  // The name record of `value`, shared by every record that holds the same
  // name: a name record is large and most names repeat (parents, references).
  // Null, with `why` set, when the value is no name.
  void* nameRecord(const SimImmValue& value, std::string* why);

  const SimImmClass& cls_;
  SimImmArena arena_;
  std::vector<SafcImmCtInstanceT*> instances_;
  std::unordered_map<std::string, void*> names_;  // by text, marked base64 or not
  std::unordered_map<const SimImmAttrDef*, char*> attrNames_;
  // Scratch of fillInstance, kept so that an object costs no allocation:
  // the naming value, and each attribute's definition (null: undefined)
  // and values.
  std::vector<SimImmValue> naming_;
  std::vector<std::pair<const SimImmAttrDef*, const std::vector<SimImmValue>*>> attrs_;
};

#endif
