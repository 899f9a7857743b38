// Writes a simulated radio node of a given size, with the package that
// upgrades it, for the whole-run scale benchmark (bench/scale/bench-scale.sh).
//
//   vosk-bench-scale-node --objects N [--schemas S] --out DIR
//
// Each schema (Ran, or Ran1..RanS) holds N objects in eight classes shaped
// like a radio node's: one managed element and one radio function, cells,
// their sector carriers and frequency relations, external neighbours and
// their termination points, and the cell relations, which are almost all of
// the objects (about 1 KB of dump each). The upgrade 1_0_0 -> 2_0_0 renames
// one attribute of the cell relations. DIR/node and DIR/package are written;
// the old model of each schema is streamed, never held in memory.

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

struct Attr {
  const char* name;
  const char* type;
  bool multi;
};

struct ClassShape {
  const char* name;
  const char* rdn;
  std::vector<Attr> attrs;
};

const char kRenamedFrom[] = "lastModification";
const char kRenamedTo[] = "lastModificationCause";

const std::vector<ClassShape>& shapes() {
  static const std::vector<ClassShape> all = {
      {"ManagedElement", "managedElementId", {{"userLabel", "SA_STRING_T", false}}},
      {"ENodeBFunction", "eNodeBFunctionId", {{"eNBId", "SA_INT32_T", false}, {"userLabel", "SA_STRING_T", false}}},
      {"EUtranCellFDD",
       "eUtranCellFDDId",
       {{"cellId", "SA_INT32_T", false},
        {"earfcndl", "SA_INT32_T", false},
        {"qRxLevMin", "SA_INT32_T", false},
        {"userLabel", "SA_STRING_T", false}}},
      {"SectorCarrier", "sectorCarrierId", {{"noOfTxAntennas", "SA_INT32_T", false}, {"cellRef", "SA_NAME_T", false}}},
      {"EUtranFreqRelation",
       "eUtranFreqRelationId",
       {{"cellReselectionPriority", "SA_INT32_T", false}, {"eutranFrequencyRef", "SA_NAME_T", false}}},
      {"ExternalENodeBFunction",
       "externalENodeBFunctionId",
       {{"eNBId", "SA_INT32_T", false}, {"eNodeBPlmnId", "SA_STRING_T", false}}},
      {"TermPointToENB", "termPointToENBId", {{"ipAddress", "SA_STRING_T", false}, {"administrativeState", "SA_INT32_T", false}}},
      {"EUtranCellRelation",
       "eUtranCellRelationId",
       {{"neighborCellRef", "SA_NAME_T", false},
        {"cellIndividualOffsetEUtran", "SA_INT32_T", false},
        {"qOffsetCellEUtran", "SA_INT32_T", false},
        {"isHoAllowed", "SA_INT32_T", false},
        {"isRemoveAllowed", "SA_INT32_T", false},
        {"loadBalancing", "SA_INT32_T", false},
        {"coverageIndicator", "SA_INT32_T", false},
        {"sCellCandidate", "SA_INT32_T", false},
        {"createdBy", "SA_INT32_T", false},
        {"timeOfCreation", "SA_TIME_T", false},
        {kRenamedFrom, "SA_INT32_T", false},
        {"userLabel", "SA_STRING_T", false},
        {"sCellPriority", "SA_UINT32_T", true}}},
  };
  return all;
}

// Object counts per class for n objects: the cell relations take what the
// other classes leave.
std::vector<long> countsFor(long n) {
  long cells = std::max(1L, n / 500);
  long external = std::max(1L, n / 330);
  std::vector<long> counts = {1, 1, cells, cells, 2 * cells, external, external, 0};
  long rest = n;
  for (long c : counts) rest -= c;
  counts.back() = std::max(1L, rest);
  return counts;
}

class SchemaWriter {
 public:
  SchemaWriter(std::string schema, std::string suffix) : schema_(std::move(schema)), suffix_(std::move(suffix)) {}

  void writeClasses(std::ostream& out, bool renamed) const {
    for (const ClassShape& shape : shapes()) {
      out << "  <class name=\"" << shape.name << suffix_ << "\">\n    <category>SA_CONFIG</category>\n"
          << "    <rdn><name>" << shape.rdn << "</name><type>SA_STRING_T</type><category>SA_CONFIG</category>"
          << "<flag>SA_INITIALIZED</flag></rdn>\n";
      for (const Attr& attr : shape.attrs) {
        const char* name = renamed && std::strcmp(attr.name, kRenamedFrom) == 0 ? kRenamedTo : attr.name;
        out << "    <attr><name>" << name << "</name><type>" << attr.type
            << "</type><category>SA_CONFIG</category><flag>SA_WRITABLE</flag>"
            << (attr.multi ? "<flag>SA_MULTI_VALUE</flag>" : "") << "</attr>\n";
      }
      out << "  </class>\n";
    }
  }

  void writeObjects(std::ostream& out, long n) const {
    std::vector<long> counts = countsFor(n);
    for (size_t c = 0; c < shapes().size(); ++c) {
      for (long i = 0; i < counts[c]; ++i) writeObject(out, c, i, counts);
    }
  }

 private:
  std::string dnOf(size_t c, long i, const std::vector<long>& counts) const {
    std::string me = "managedElementId=" + schema_;
    std::string enb = "eNodeBFunctionId=1," + me;
    switch (c) {
      case 0: return me;
      case 1: return enb;
      case 2: return "eUtranCellFDDId=cell" + std::to_string(i) + "," + enb;
      case 3: return "sectorCarrierId=" + std::to_string(i) + "," + enb;
      case 4: return "eUtranFreqRelationId=" + std::to_string(i % 2) + "," + dnOf(2, i / 2, counts);
      case 5: return "externalENodeBFunctionId=ext" + std::to_string(i) + "," + enb;
      case 6: return "termPointToENBId=1," + dnOf(5, i, counts);
      default: return "eUtranCellRelationId=rel" + std::to_string(i) + "," + dnOf(4, i % counts[4], counts);
    }
  }

  std::string valueOf(const Attr& attr, long i, const std::vector<long>& counts) const {
    if (std::strcmp(attr.type, "SA_NAME_T") == 0) return dnOf(5, i % counts[5], counts);
    if (std::strcmp(attr.type, "SA_STRING_T") == 0) return "label of object " + std::to_string(i);
    if (std::strcmp(attr.type, "SA_TIME_T") == 0) return std::to_string(1700000000000000000L + i);
    return std::to_string(i % 97);
  }

  void writeObject(std::ostream& out, size_t c, long i, const std::vector<long>& counts) const {
    const ClassShape& shape = shapes()[c];
    out << "  <object class=\"" << shape.name << suffix_ << "\">\n    <dn>" << dnOf(c, i, counts) << "</dn>\n";
    for (const Attr& attr : shape.attrs) {
      out << "    <attr>\n      <name>" << attr.name << "</name>\n";
      int values = attr.multi ? 3 : 1;
      for (int v = 0; v < values; ++v) out << "      <value>" << valueOf(attr, i + v, counts) << "</value>\n";
      out << "    </attr>\n";
    }
    out << "  </object>\n";
  }

  std::string schema_;
  std::string suffix_;
};

const char kHead[] = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                     "<imm:IMM-contents xmlns:imm=\"http://www.saforum.org/IMMSchema\">\n";
const char kTail[] = "</imm:IMM-contents>\n";

std::ofstream create(const fs::path& path) {
  fs::create_directories(path.parent_path());
  std::ofstream out(path);
  if (!out) {
    std::cerr << "cannot write " << path << "\n";
    std::exit(2);
  }
  return out;
}

void writeSchema(const fs::path& dir, const std::string& schema, const std::string& suffix, long n) {
  SchemaWriter writer(schema, suffix);
  std::ofstream old = create(dir / "node/imm/old" / (schema + ".xml"));
  old << kHead;
  writer.writeClasses(old, false);
  writer.writeObjects(old, n);
  old << kTail;
  for (const fs::path& path : {dir / "node/imm/new" / (schema + ".xml"),
                               dir / "package/share/models" / schema / "imm" / (schema + "_imm_classes.xml")}) {
    std::ofstream classes = create(path);
    classes << kHead;
    writer.writeClasses(classes, true);
    classes << kTail;
  }
  std::ofstream mod = create(dir / "node/lmhi" / schema / "modification_files/CXC0000001_R1A" /
                             "modification_1_0_0_to_2_0_0.xml");
  mod << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<modifications>\n  <Mo name=\"EUtranCellRelation" << suffix
      << "\">\n    <MoAction name=\"RenameAttributeAction\">\n      <Arg name=\"name\" value=\"" << kRenamedFrom
      << "\"/>\n      <Arg name=\"newName\" value=\"" << kRenamedTo
      << "\"/>\n    </MoAction>\n  </Mo>\n</modifications>\n";
}

}  // namespace

int main(int argc, char** argv) {
  long objects = 0;
  int schemas = 1;
  fs::path out;
  for (int i = 1; i + 1 < argc; i += 2) {
    std::string flag = argv[i];
    if (flag == "--objects") objects = std::atol(argv[i + 1]);
    else if (flag == "--schemas") schemas = std::atoi(argv[i + 1]);
    else if (flag == "--out") out = argv[i + 1];
  }
  if (objects < 10 || schemas < 1 || out.empty()) {
    std::cerr << "usage: vosk-bench-scale-node --objects N (at least 10) [--schemas S] --out DIR\n";
    return 2;
  }
  std::ofstream versions = create(out / "node/versions");
  std::ofstream appdata = create(out / "package/appdata/voskOamUpgradeModLm.xml");
  appdata << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<voskOamUpgradeModLm>\n";
  for (int s = 1; s <= schemas; ++s) {
    std::string suffix = schemas == 1 ? "" : std::to_string(s);
    std::string schema = "Ran" + suffix;
    writeSchema(out, schema, suffix, objects);
    versions << schema << " 1_0_0 2_0_0\n";
    appdata << "  <lmlist boardType=\"" << schema << "\"/>\n";
  }
  appdata << "</voskOamUpgradeModLm>\n";
  return 0;
}
