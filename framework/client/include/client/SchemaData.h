// One schema to upgrade, as the client application hands it to the
// framework.

#ifndef VOSK_CLIENT_SCHEMA_DATA_H
#define VOSK_CLIENT_SCHEMA_DATA_H

#include <string>

struct SchemaData {
  std::string schemaName;
  // The schema's IMM class-definition file.
  std::string schemaPath;
  // The key of the schema's modification files at the load-module handler.
  std::string boardType;
  // The IMM namespace of the schema's classes; may be empty.
  std::string immNs;
};

#endif
