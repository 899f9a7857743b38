// Reads one IMM XML file as a stream, never as a whole document: class
// definitions and objects are handed to callbacks one at a time, so a dump
// of a million objects takes the memory of one object.
//
// Accepted shape: root imm:IMM-contents (namespace
// http://www.saforum.org/IMMSchema); `class` elements (attribute `name`;
// children `category`, `rdn`, `attr`, where `rdn` and `attr` have `name`,
// `type`, `category`, `flag`* and `attr` an optional `default-value`), then
// `object` elements (attribute `class`; children `dn` and `attr` with `name`
// and `value`*, a value in base64 when marked xsi:type="xs:base64Binary").
// An attribute given twice in an object has the values of both, with a
// warning. Other elements, comments and attributes are skipped. A class
// after an object, a missing name, dn or type, or an unknown type name make
// the file malformed.
// A text may be of any size; nothing outside the file (DTD, external entity,
// network) is loaded; a reference to an entity other than the five
// predefined ones makes the file malformed rather than lose its text. Lines
// are the file's own, however many it has.
//
// The file is parsed with SAX callbacks, not into nodes: a reading costs
// about half of one pass of a node-building streaming reader.

#ifndef VOSK_SIM_SIM_IMM_DUMP_READER_H
#define VOSK_SIM_SIM_IMM_DUMP_READER_H

#include <functional>
#include <string>
#include <vector>

#include "SimImmClass.h"
#include "SimImmObject.h"

struct _xmlError;
struct _xmlParserCtxt;

class SimImmDumpReader {
 public:
  struct Handler {
    // Each class definition; returning false stops the reading.
    std::function<bool(SimImmClass&&)> onClass;
    // Decides, before an object is parsed, whether to hand it over; unset:
    // every object.
    std::function<bool(const std::string& className)> wantObject;
    // Each wanted object; returning false stops the reading. Unset: the
    // reading stops at the first object (a pass over the definitions only).
    std::function<bool(SimImmObject&&)> onObject;
    // Each thing a node's loader takes but that is likely a mistake (an
    // attribute given twice in an object), with the file; unset: none told.
    std::function<void(const std::string& path, const std::string& warning)> onWarning;
  };

  // Reads `path` through `handler`. False when the file cannot be read or is
  // malformed; error() then tells where and why. Stopping early is no error.
  bool read(const std::string& path, const Handler& handler);

  const std::string& error() const { return error_; }

 private:
  // What an open element is to the reading.
  enum class Kind { kRoot, kClass, kAttrDef, kObject, kObjectAttr, kText };
  struct Open {
    Kind kind;
    int line;  // of its start tag
  };
  // The attributes of a start tag as the parser hands them over: five
  // pointers each (local name, prefix, namespace, value, value end).
  using TagAttributes = const unsigned char**;

  // The parser's callbacks; `context` is the parser's, which carries the
  // reader.
  static void startElement(void* context, const unsigned char* localName, const unsigned char* prefix,
                           const unsigned char* uri, int nbNamespaces, const unsigned char** namespaces,
                           int nbAttributes, int nbDefaulted, const unsigned char** attributes);
  static void endElement(void* context, const unsigned char* localName, const unsigned char* prefix,
                         const unsigned char* uri);
  static void characters(void* context, const unsigned char* text, int length);
  static void reference(void* context, const unsigned char* name);
  static void parserError(void* context, _xmlError* error);

  void start(const char* name, const char* uri, TagAttributes attributes, int count);
  void startInRoot(const char* name, TagAttributes attributes, int count);
  void startInClass(const char* name, TagAttributes attributes, int count);
  void startInAttrDef(const char* name);
  void startInObject(const char* name);
  void startInObjectAttr(const char* name, TagAttributes attributes, int count);
  void end();
  void endClass(int line);
  void endAttrDef(int line);
  void endObject(int line);
  void endObjectAttr(int line);
  // Opens an element whose text goes to `target`.
  void openText(const char* name, std::string* target);
  void open(Kind kind) { open_.push_back(Open{kind, line()}); }
  void skip() { ++skipped_; }
  void stop();
  // Records `why` at `line` (the first failure only) and stops the parser.
  void fail(int line, const std::string& why);
  int line() const;

  static std::string attribute(TagAttributes attributes, int count, const char* name, const char* uri);

  _xmlParserCtxt* context_ = nullptr;
  const Handler* handler_ = nullptr;
  std::string path_;
  std::string error_;
  std::string parserError_;
  bool stopped_ = false;
  bool objectsSeen_ = false;
  std::vector<Open> open_;
  int skipped_ = 0;  // depth inside elements the reading skips
  std::string* text_ = nullptr;  // where the open text element's text goes
  const char* textElement_ = nullptr;  // its name, held by the parser
  // What the open elements build.
  SimImmClass class_;
  bool hasRdn_ = false;
  SimImmAttrDef* attrDef_ = nullptr;
  std::string typeName_;
  SimImmObject object_;
  std::vector<std::pair<int, std::string>> repeated_;  // line, attribute
  SimImmAttrValues attr_;
};

#endif
