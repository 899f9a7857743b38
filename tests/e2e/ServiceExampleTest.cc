// The second bundled example, a node whose naming attributes hold the whole
// RDN (examples/service): every object of the old model reaches the new one
// with its dn and every value, as the node's loader reads them, except what
// the modification file changes.

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "SimImmArena.h"
#include "SimImmDumpReader.h"
#include "SimImmValueCodec.h"
#include "TempDir.h"
#include "WholeRun.h"

namespace e2e {
namespace {

using Attrs = std::map<std::string, std::vector<std::string>>;
using Objects = std::map<std::string, Attrs>;  // by dn

// The objects of a model file, each value in one text per value whatever
// form the file gave it in (hexadecimal, octal, base64, an attribute given
// twice).
Objects loadedObjects(const std::string& path) {
  std::map<std::string, SimImmClass> classes;
  Objects objects;
  SimImmDumpReader::Handler handler;
  handler.onClass = [&](SimImmClass&& cls) {
    std::string name = cls.name;
    classes.emplace(name, std::move(cls));
    return true;
  };
  handler.onObject = [&](SimImmObject&& object) {
    Attrs& attrs = objects[object.dn];
    for (const SimImmAttrValues& attr : object.attrs) {
      const SimImmAttrDef* def = classes.at(object.className).find(attr.name);
      EXPECT_NE(nullptr, def) << object.dn << " " << attr.name;
      for (const SimImmValue& value : attr.values) {
        SimImmArena arena;
        void* record = arena.allocate(SimImmValueCodec::valueSize(def->type));
        std::string why, text;
        EXPECT_TRUE(SimImmValueCodec::parse(def->type, value, record, arena, &why)) << why;
        EXPECT_TRUE(SimImmValueCodec::format(def->type, record, &text, &why)) << why;
        attrs[attr.name].push_back(text);
      }
    }
    return true;
  };
  SimImmDumpReader reader;
  EXPECT_TRUE(reader.read(path, handler)) << reader.error();
  return objects;
}

TEST(ServiceExampleTest, EveryNameAndValueReachesTheNewModel) {
  TempDir scratch;
  const std::string example = std::string(EXAMPLES_DIR) + "/service";
  RunResult run = WholeRun(RunFolders{example + "/package", example + "/node", scratch.path() + "/out",
                                      scratch.path()})
                      .run();
  ASSERT_EQ(0, run.exitStatus) << run.report;
  EXPECT_EQ(std::vector<std::string>{"old model [" + example + "/node/imm/old/Services.xml] warning: line 160: "
                                     "object svcNode=PL-3,svcCluster=main: attribute svcNodeClmNode is given more "
                                     "than once; its values are taken together"},
            run.platformErrors);

  Objects expected = loadedObjects(example + "/node/imm/old/Services.xml");
  for (const char* node : {"svcNode=SC-1,svcCluster=main", "svcNode=PL-3,svcCluster=main"}) {
    Attrs& attrs = expected.at(node);
    attrs["svcNodeFailoverMax"] = attrs.at("svcNodeSuFailoverMax");
    attrs.erase("svcNodeSuFailoverMax");
  }
  expected["svcNode=PL-4,svcCluster=main"];
  expected.erase("svcStreamCfg=system,svcApp=logging");
  expected.at("svcStreamCfg=alarm,svcApp=logging")["svcStreamMaxFileSize"] = {"10000000"};
  EXPECT_EQ(expected, loadedObjects(run.outPath + "/model/Services.xml"));
}

}  // namespace
}  // namespace e2e
