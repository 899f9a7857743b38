// Whole-dump timings of the simulated IMM conversion tool.
//
//   sim_immct_bench [N ...]   (default: 10000 100000 1000000)
//
// For each N, generates an old model of N objects in 20 classes (about 1 KB
// an object, so a million objects make about 1 GB) below /tmp, then times,
// each in a child process of its own so that its peak memory is its own:
//   floor: a plain streaming parse of the dump with xmlTextReader;
//   read:  every class through safcImmCtReadInstances_2 and freed again
//          (the first read indexes the dump);
//   copy:  every class through safcImmCtCopyInstances, then
//          safcImmCtFinalize writing the new model (indexing the dump
//          first, as no read did).
// Prints seconds, the ratio to the floor and the peak resident memory. The
// generated files are removed at the end.

#include <libxml/xmlreader.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "safcImmCt.h"

namespace {

const int kClasses = 20;

std::string className(int c) { return "BenchClass" + std::to_string(c); }

void writeDump(const std::string& path, long objects) {
  std::FILE* f = std::fopen(path.c_str(), "w");
  std::setvbuf(f, nullptr, _IOFBF, 1 << 20);
  std::fputs("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
             "<imm:IMM-contents xmlns:imm=\"http://www.saforum.org/IMMSchema\">\n", f);
  const char* attrs[][2] = {{"count", "SA_INT32_T"},   {"mask", "SA_UINT32_T"},     {"big", "SA_INT64_T"},
                            {"ubig", "SA_UINT64_T"},   {"ratio", "SA_DOUBLE_T"},    {"userLabel", "SA_STRING_T"},
                            {"note", "SA_STRING_T"},   {"peer", "SA_NAME_T"},       {"blob", "SA_ANY_T"},
                            {"list", "SA_INT32_T"}};
  for (int c = 0; c < kClasses; ++c) {
    std::string name = className(c);
    std::fprintf(f, "  <class name=\"%s\">\n    <category>SA_CONFIG</category>\n    <rdn><name>b%sId</name>"
                    "<type>SA_STRING_T</type><category>SA_CONFIG</category><flag>SA_INITIALIZED</flag></rdn>\n",
                 name.c_str(), name.c_str() + 1);
    for (auto& a : attrs) {
      std::fprintf(f, "    <attr><name>%s</name><type>%s</type><category>SA_CONFIG</category>"
                      "<flag>SA_WRITABLE</flag></attr>\n", a[0], a[1]);
    }
    std::fputs("  </class>\n", f);
  }
  for (long i = 0; i < objects; ++i) {
    int c = static_cast<int>(i % kClasses);
    std::string name = className(c);
    std::fprintf(f,
                 "  <object class=\"%s\">\n    <dn>b%sId=%ld,parentId=%ld,managedElementId=1</dn>\n"
                 "    <attr><name>count</name><value>%ld</value></attr>\n"
                 "    <attr><name>mask</name><value>%lu</value></attr>\n"
                 "    <attr><name>big</name><value>-%ld000000</value></attr>\n"
                 "    <attr><name>ubig</name><value>%ld000000000</value></attr>\n"
                 "    <attr><name>ratio</name><value>%ld.25</value></attr>\n"
                 "    <attr><name>userLabel</name><value>object %ld of class %s, labelled for the benchmark of "
                 "the simulated node</value></attr>\n"
                 "    <attr><name>note</name><value>some free text that users put into notes, long enough to "
                 "look like a real attribute value of a real node</value></attr>\n"
                 "    <attr><name>peer</name><value>peerId=%ld,transportId=1,managedElementId=1</value></attr>\n"
                 "    <attr><name>blob</name><value>00112233445566778899aabbccddeeff00112233445566778899aabbccddeeff"
                 "</value></attr>\n"
                 "    <attr><name>list</name><value>1</value><value>2</value><value>3</value><value>4</value>"
                 "<value>%ld</value></attr>\n"
                 "  </object>\n",
                 name.c_str(), name.c_str() + 1, i, i / 100, i, static_cast<unsigned long>(i) * 7, i, i, i, i,
                 name.c_str(), i + 1, i);
  }
  std::fputs("</imm:IMM-contents>\n", f);
  std::fclose(f);
}

bool plainParse(const std::string& dump) {
  xmlTextReaderPtr reader = xmlReaderForFile(dump.c_str(), nullptr, XML_PARSE_NONET);
  if (reader == nullptr) return false;
  int rc;
  while ((rc = xmlTextReaderRead(reader)) == 1) {
  }
  xmlFreeTextReader(reader);
  return rc == 0;
}

bool readAll() {
  SafcImmCtHandleT handle = 0;
  if (safcImmCtInitialize_2(&handle, 0) != SA_AIS_OK) return false;
  for (int c = 0; c < kClasses; ++c) {
    SafcImmCtInstanceGroupT** groups = nullptr;
    std::string name = className(c);
    if (safcImmCtReadInstances_2(handle, name.data(), &groups) != SA_AIS_OK) return false;
    if (safcImmCtInstanceGroupsMemoryFree(handle, groups) != SA_AIS_OK) return false;
  }
  return safcImmCtFinalize(handle) == SA_AIS_OK;
}

bool copyAll() {
  SafcImmCtHandleT handle = 0;
  SafcImmCtSchemaVersionT_2 from{}, to{};
  if (safcImmCtInitialize_2(&handle, 0) != SA_AIS_OK) return false;
  if (safcImmCtReadSchemaVersion_2(handle, "Bench", &from, &to) != SA_AIS_OK) return false;
  std::vector<std::string> names;
  for (int c = 0; c < kClasses; ++c) names.push_back(className(c));
  std::vector<SaImmClassNameT> list;
  for (std::string& name : names) list.push_back(name.data());
  list.push_back(nullptr);
  if (safcImmCtCopyInstances(handle, list.data()) != SA_AIS_OK) return false;
  return safcImmCtFinalize(handle) == SA_AIS_OK;
}

struct Measure {
  double seconds = 0;
  long peakKb = 0;
  bool ok = false;
};

// Runs `work` in a child process: its wall time and peak resident memory.
Measure inChild(const std::function<bool()>& work) {
  int pipeFds[2];
  if (::pipe(pipeFds) != 0) return {};
  pid_t pid = ::fork();
  if (pid == 0) {
    auto start = std::chrono::steady_clock::now();
    bool ok = work();
    double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    if (!ok) seconds = -1;
    ssize_t written = ::write(pipeFds[1], &seconds, sizeof seconds);
    ::_exit(written == sizeof seconds ? 0 : 1);
  }
  Measure m;
  ssize_t got = ::read(pipeFds[0], &m.seconds, sizeof m.seconds);
  ::close(pipeFds[0]);
  ::close(pipeFds[1]);
  int status = 0;
  struct rusage usage {};
  ::wait4(pid, &status, 0, &usage);
  m.peakKb = usage.ru_maxrss;
  m.ok = got == sizeof m.seconds && m.seconds >= 0 && WIFEXITED(status) && WEXITSTATUS(status) == 0;
  return m;
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<long> sizes;
  for (int i = 1; i < argc; ++i) sizes.push_back(std::atol(argv[i]));
  if (sizes.empty()) sizes = {10000, 100000, 1000000};
  namespace fs = std::filesystem;
  std::printf("%9s %8s | %-22s | %-22s | %-22s\n", "objects", "dump MB", "floor s (peak MB)", "read all s (x, MB)",
              "copy all s (x, MB)");
  for (long n : sizes) {
    fs::path root = fs::temp_directory_path() / ("vosk-immct-bench-" + std::to_string(::getpid()));
    fs::create_directories(root / "imm/old");
    std::string dump = (root / "imm/old/dump.xml").string();
    writeDump(dump, n);
    std::FILE* versions = std::fopen((root / "versions").c_str(), "w");
    std::fputs("Bench 1_0_0 2_0_0\n", versions);
    std::fclose(versions);
    ::setenv("VOSK_SIM_ROOT", root.c_str(), 1);

    Measure floor = inChild([&] { return plainParse(dump); });
    Measure read = inChild(readAll);
    Measure copy = inChild(copyAll);
    bool copied = fs::exists(root / "out/model/Bench.xml");
    std::printf("%9ld %8.0f | %8.2f (%6ld)        | %8.2f (%4.1fx, %6ld) | %8.2f (%4.1fx, %6ld)%s\n", n,
                fs::file_size(dump) / 1e6, floor.seconds, floor.peakKb / 1024, read.seconds,
                read.seconds / floor.seconds, read.peakKb / 1024, copy.seconds, copy.seconds / floor.seconds,
                copy.peakKb / 1024, floor.ok && read.ok && copy.ok && copied ? "" : "  FAILED");
    std::fflush(stdout);
    fs::remove_all(root);
  }
  return 0;
}
