// The objects of a model file the simulated node wrote, read back by
// distinguished name, for whole-run tests to compare.

#ifndef VOSK_TESTS_E2E_MODEL_OBJECTS_H
#define VOSK_TESTS_E2E_MODEL_OBJECTS_H

#include <map>
#include <string>
#include <vector>

namespace e2e {

struct ModelObject {
  std::string className;
  // Attribute name -> values, in file order.
  std::map<std::string, std::vector<std::string>> attrs;
};

using ModelObjects = std::map<std::string, ModelObject>;

// Empty when the file is absent or not XML.
ModelObjects readModelObjects(const std::string& path);

// The dns of the objects of `className`, in dn order.
std::vector<std::string> dnsOf(const ModelObjects& objects, const std::string& className);

}  // namespace e2e

#endif
