#include "SampleSchema.h"

namespace e2e {

std::string samplePortClass(const std::string& name) { return name + "Port"; }

SchemaSetup sampleSchema(const std::string& name, const std::string& from, const std::string& to) {
  ImmClass root{name, {{"userLabel", "SA_STRING_T"}}};
  ImmClass port{samplePortClass(name),
                {{"mtu", "SA_UINT32_T"}, {"weight", "SA_INT64_T"}, {"tags", "SA_STRING_T", true}}};
  SchemaSetup schema{name, from, to, {root, port}, {}};
  if (from == "0_0_0") return schema;
  const std::string rootDn = root.rdnName() + "=1";
  schema.oldObjects = {
      {root.name, rootDn, {{"userLabel", {"root of " + name}}}},
      {port.name, port.rdnName() + "=1," + rootDn, {{"mtu", {"1500"}}, {"weight", {"-7"}}, {"tags", {"a", "b"}}}},
      {port.name, port.rdnName() + "=2," + rootDn, {{"mtu", {"9000"}}, {"weight", {"12345678901"}}}},
  };
  return schema;
}

}  // namespace e2e
