// Writes an upgrade package and a simulated node for whole runs of the
// upgrader: the package's appdata file and IMM class files, the node's old
// model, new class definitions, versions file and load modules.
//
// Layout below the root given to the constructor:
//   package/  appdata/voskOamUpgradeModLm.xml, share/models/<S>/imm/<S>_imm_classes.xml
//   node/     versions, imm/old/<S>.xml, imm/new/<S>.xml,
//             lmhi/<S>/modification_files/<loadModule>/<file>
// The node writes below node/out (the wrapper's default output folder).
// Every call writes its files at once. The constructor writes an appdata
// file and a versions file that list no schema; add rewrites both to list
// every schema added so far.

#ifndef VOSK_TESTS_E2E_NODE_BUILDER_H
#define VOSK_TESTS_E2E_NODE_BUILDER_H

#include <string>
#include <utility>
#include <vector>

namespace e2e {

struct ImmAttr {
  std::string name;
  std::string type;  // SA_INT32_T, SA_STRING_T, ...
  bool multiValue = false;
};

// Attributes written "name:TYPE name:TYPE* ..."; '*' marks a multi-valued one.
std::vector<ImmAttr> immAttrs(const std::string& text);

struct ImmClass {
  std::string name;
  std::vector<ImmAttr> attrs;
  std::string rdn = "";  // the naming attribute; empty: rdnName()

  // The naming attribute: `rdn`, else the class name with its first letter lower-cased, then "Id".
  std::string rdnName() const;
};

struct ImmObject {
  std::string className;
  std::string dn;                                                       // its first RDN names the object
  std::vector<std::pair<std::string, std::vector<std::string>>> attrs;  // name, values
};

struct SchemaSetup {
  std::string name;
  std::string from;  // "0_0_0": a new schema, absent from the old model
  std::string to;
  // The classes of the schema: the package's class file and the node's new
  // definitions (unless newClasses are given), and, unless the schema is new,
  // the old model's.
  std::vector<ImmClass> classes;
  std::vector<ImmObject> oldObjects = {};
  std::vector<ImmClass> newClasses = {};
  // False: the node has no imm/new definitions of the schema; when no other schema has any either, the node
  // checks nothing written and drops no class from its copies.
  bool newClassesOnNode = true;
};

// A small schema for runs that do not care about its classes: a root class
// named after the schema and a child class "<name>Port" with attributes of
// several types, a multi-valued one among them. Old objects (unless the schema
// is new, from "0_0_0"), with <root> "<name with lower-case first letter>Id"
// and <port> the same for "<name>Port":
//   <root>=1               userLabel "root of <name>"
//   <port>=1,<root>=1      mtu 1500, weight -7, tags "a", "b"
//   <port>=2,<root>=1      mtu 9000, weight 12345678901
SchemaSetup sampleSchema(const std::string& name, const std::string& from, const std::string& to);

// A modification file holding `mos`, e.g. mo("Foo", moAction("RemoveAttributeAction", "name=a")).
std::string modifications(const std::string& mos);
std::string mo(const std::string& className, const std::string& actions);
// A MoAction with Arg elements from `args` ("name=value ..."), and an
// Operation element with the attributes `operation` (none when empty).
std::string moAction(const std::string& name, const std::string& args, const std::string& operation = "");
// As above, for argument values holding blanks or '=': each pair an Arg element, the value escaped for XML.
using ArgList = std::vector<std::pair<std::string, std::string>>;
std::string moAction(const std::string& name, const ArgList& args, const std::string& operation = "");

class NodeBuilder {
 public:
  explicit NodeBuilder(std::string root);

  const std::string& root() const { return root_; }
  std::string packagePath() const { return root_ + "/package"; }
  std::string nodePath() const { return root_ + "/node"; }
  std::string outPath() const { return nodePath() + "/out"; }

  // Lists the schema in the appdata file and the versions file and writes
  // its class files and old model. A schema added again replaces the first
  // (its files not rewritten are left as they are).
  NodeBuilder& add(const SchemaSetup& schema);
  // The same for many schemas, the listings written once.
  NodeBuilder& add(const std::vector<SchemaSetup>& schemas);
  // Delivers `content` as file `fileName` of load module `loadModule` of the
  // schema's board type; returns the file's path.
  std::string modificationFile(const std::string& schema, const std::string& loadModule, const std::string& fileName,
                               const std::string& content);
  // Removes a file below the root (e.g. "package/appdata/voskOamUpgradeModLm.xml").
  NodeBuilder& remove(const std::string& relative);

  // A modification file with one Mo element per class and no actions: each
  // class is read from the old model and written back from memory.
  static std::string readingModificationFile(const std::vector<std::string>& classNames);

 private:
  void write(const std::string& relative, const std::string& content) const;
  void writeListings() const;
  void writeSchemaFiles(const SchemaSetup& schema);

  const std::string root_;
  std::vector<SchemaSetup> schemas_;
};

}  // namespace e2e

#endif
