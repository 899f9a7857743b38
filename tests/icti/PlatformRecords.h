// Platform instance records for tests, as the conversion tool would hand them
// out: built from a short description and owned by the builder. describe()
// turns any group record into text, so that two records can be compared.

#ifndef VOSK_TESTS_ICTI_PLATFORM_RECORDS_H
#define VOSK_TESTS_ICTI_PLATFORM_RECORDS_H

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "safcImmCt.h"

// Values as text: numbers in base 10, names and strings as they are, byte
// buffers as lower-case hexadecimal.
struct AttributeData {
  std::string name;
  SaImmValueTypeT type;
  std::vector<std::string> values;
};

struct InstanceData {
  std::optional<std::string> parent;
  std::vector<AttributeData> attributes;
};

class PlatformRecords {
 public:
  SafcImmCtInstanceGroupT* group(const std::string& className, const std::vector<InstanceData>& instances);
  SafcImmCtInstanceT* instance(const InstanceData& data);
  SaImmAttrValuesT_2* attribute(const AttributeData& data);
  // A name record whose length field may differ from its text.
  SaNameT* name(const std::string& text, SaUint16T length);

 private:
  template <typename T>
  T* make(size_t count = 1);
  void* value(SaImmValueTypeT type, const std::string& text);
  char* text(const std::string& text);

  std::vector<std::unique_ptr<char[]>> blocks_;
};

std::string describe(const SafcImmCtInstanceGroupT* group);
std::string describe(const SaImmAttrValuesT_2* attribute);

#endif
