// A small schema for whole runs that need one but do not care about its
// classes: a root class named after the schema and a child class "<name>Port"
// with attributes of several types, a multi-valued one among them.
//
// Old objects (unless the schema is new, from "0_0_0"):
//   <root>=1                       userLabel "root of <name>"
//   <port>=1,<root>=1              mtu 1500, weight -7, tags "a", "b"
//   <port>=2,<root>=1              mtu 9000, weight 12345678901
// where <root> is "<name with lower-case first letter>Id" and <port> the same
// for "<name>Port".

#ifndef VOSK_TESTS_E2E_SAMPLE_SCHEMA_H
#define VOSK_TESTS_E2E_SAMPLE_SCHEMA_H

#include <string>

#include "NodeBuilder.h"

namespace e2e {

SchemaSetup sampleSchema(const std::string& name, const std::string& from, const std::string& to);

// The name of the sample's child class: name + "Port".
std::string samplePortClass(const std::string& name);

}  // namespace e2e

#endif
