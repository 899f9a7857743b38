#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "LogRecorder.h"
#include "MockIctiHandler.h"
#include "TempDir.h"
#include "parser/XmlHandler.h"

using testing::_;
using testing::NiceMock;
using testing::StrEq;

namespace {

using Classes = XmlHandler::ImmClasses;

std::string rdn(const char* name, const char* flags) {
  return std::string("<rdn><name>") + name + "</name><type>SA_STRING_T</type><category>SA_CONFIG</category>" + flags +
         "</rdn>";
}

std::string immClass(const char* name, const char* category, const std::string& body) {
  return std::string("<class name=\"") + name + "\"><category>" + category + "</category>" + body + "</class>";
}

std::string immFile(const std::string& classes) {
  return R"(<?xml version="1.0" encoding="utf-8"?>
<imm:IMM-contents xmlns:imm="http://www.saforum.org/IMMSchema" xmlns:xs="http://www.w3.org/2001/XMLSchema">)" +
         classes + R"(<object class="A"><dn>aId=1</dn></object></imm:IMM-contents>)";
}

const char kPersistent[] = "<flag>SA_PERSISTENT</flag>";

class ImmClassesTest : public testing::Test {
 protected:
  std::string write(const std::string& content) { return file = dir.write("schema_imm_classes.xml", content); }

  TempDir dir;
  std::string file;
  NiceMock<MockIctiHandler> handler;
  XmlHandler parser{&handler};
};

TEST_F(ImmClassesTest, SelectsClassesByCategoryInDocumentOrder) {
  write(immFile(
      immClass("A", "SA_CONFIG", rdn("aId", "<flag>SA_INITIALIZED</flag>") + "<attr><name>x</name></attr>") +
      immClass("NoRdnName", "SA_CONFIG", "<rdn><type>SA_STRING_T</type></rdn>") +
      immClass("RtPersistent", "SA_RUNTIME",
               rdn("rtPersistentId", kPersistent) + "<attr><name>v</name><flag>SA_CACHED</flag>" + kPersistent +
                   "</attr>") +
      immClass("RtRdnOnly", "SA_RUNTIME", rdn("rtRdnOnlyId", kPersistent) + "<attr><name>v</name></attr>") +
      immClass("RtAttrOnly", "SA_RUNTIME", rdn("rtAttrOnlyId", "") + "<attr>" + kPersistent + "</attr>") +
      immClass("RtLaterRdn", "SA_RUNTIME", "<attr><name>v</name>" + std::string(kPersistent) + "</attr>" +
                                               rdn("rtLaterRdnId", kPersistent)) +
      immClass("B", "SA_CONFIG", "<attr><name>y</name></attr>" + rdn("bId", ""))));

  EXPECT_CALL(handler, failUpgrade(_)).Times(0);
  EXPECT_EQ(Classes({{"A", "aId"}, {"B", "bId"}}), parser.getImmClasses(file.c_str(), "SA_CONFIG"));
  EXPECT_EQ(Classes({{"RtPersistent", "rtPersistentId"}, {"RtLaterRdn", "rtLaterRdnId"}}),
            parser.getImmClasses(file.c_str(), "SA_RUNTIME"));
}

TEST_F(ImmClassesTest, NameIsFoundAfterOtherAttributesAndAClassWithoutOneEndsTheList) {
  write(immFile("<class kind=\"x\" name=\"A\"><category>SA_CONFIG</category>" + rdn("aId", "") + "</class>" +
                "<class other=\"x\"><category>SA_CONFIG</category>" + rdn("zId", "") + "</class>" +
                immClass("B", "SA_CONFIG", rdn("bId", ""))));
  EXPECT_CALL(handler, failUpgrade(StrEq("ABN: Failed to find class name property in " + file)));
  EXPECT_EQ(Classes({{"A", "aId"}}), parser.getImmClasses(file.c_str(), "SA_CONFIG"));
}

// The category is the program's own constant (SA_CONFIG or SA_RUNTIME), so the file is the only input.
TEST_F(ImmClassesTest, AnUnreadableFileIsReported) {
  write("");
  EXPECT_CALL(handler, failUpgrade(StrEq("ABN: xmlParseFile failed for " + file)));
  EXPECT_TRUE(parser.getImmClasses(file.c_str(), "SA_CONFIG").empty());
  // Without a handler the failure is only logged.
  const std::string missing = dir.path() + "/absent.xml";
  EXPECT_TRUE(XmlHandler(nullptr).getImmClasses(missing.c_str(), "SA_CONFIG").empty());
  EXPECT_TRUE(LogRecorder::installed().contains("ABN: xmlParseFile failed for " + missing));
}

}  // namespace
