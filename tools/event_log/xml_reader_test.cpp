#include "event_log/xml_reader.h"

#include <doctest/doctest.h>

#include "event_log/event_log_error.h"

namespace dozewell {
namespace {

// The pieces in a short form: "a{", "text", "}a".
std::string Read(std::string_view text) {
  XmlReader xml(text, "log");
  std::string pieces;
  for (;;) {
    switch (xml.Next()) {
      case XmlReader::Piece::Start:
        pieces += std::string(xml.Name()) + std::to_string(xml.Depth()) + "{";
        break;
      case XmlReader::Piece::End:
        pieces += "}" + std::string(xml.Name()) + std::to_string(xml.Depth());
        break;
      case XmlReader::Piece::Text:
        pieces += "[" + xml.Text() + "]";
        break;
      case XmlReader::Piece::Nothing:
        return pieces;
    }
  }
}

std::string Attribute(std::string_view text, std::string_view name) {
  XmlReader xml(text, "log");
  REQUIRE(xml.Next() == XmlReader::Piece::Start);
  return xml.Attribute(name);
}

void NotWellFormed(std::string_view text, const char* message) {
  CAPTURE(text);
  CHECK_THROWS_WITH_AS(Read(text), message, EventLogError);
}

}  // namespace

TEST_CASE("XML is read piece by piece, with several roots or none") {
  CHECK(Read("<a><b>text</b></a>\r\n <c/>") == "a1{b2{[text]}b2}a1c1{}c1");
  CHECK(Read("<a ><b\n/></a\t>") == "a1{b2{}b2}a1");
  CHECK(Read("") == "");
  CHECK(Read(" \r\n") == "");
}

TEST_CASE("comments and processing instructions are skipped") {
  CHECK(Read("<?xml version='1.0'?><!-- <x> --><a>1<!--->--->2<?x?></a>") == "a1{[1][2]}a1");
}

TEST_CASE("characters are unescaped, and those of CDATA are not") {
  CHECK(Read("<a>&lt;&gt;&amp;&quot;&apos;&#65;&#x42;&#xFC;&#x1F4BB;&amp;lt;</a>") ==
        "a1{[<>&\"'AB\xC3\xBC\xF0\x9F\x92\xBB&lt;]}a1");
  CHECK(Read("<a><![CDATA[<b>&lt;]]]]></a>") == "a1{[<b>&lt;]]]}a1");
  CHECK(Read("<a>\x01\xFF</a>") == "a1{[\x01\xFF]}a1");
}

TEST_CASE("attributes have either quotation mark") {
  constexpr std::string_view kXml = "<a b='1\"' c = \"&lt;2>'\" xb='3'/>";
  CHECK(Attribute(kXml, "b") == "1\"");
  CHECK(Attribute(kXml, "c") == "<2>'");
  CHECK(Attribute(kXml, "xb") == "3");
  CHECK(Attribute(kXml, "d") == "");
}

TEST_CASE("XML that is not well formed is refused with its line") {
  NotWellFormed("<a>\n<b>\n", "log: line 3: <b> has no end");
  NotWellFormed("<a>\n</b>", "log: line 2: </b> ends nothing");
  NotWellFormed("</a>", "log: line 1: </a> ends nothing");
  NotWellFormed("\n\ntext", "log: line 3: text where an element should be");
  NotWellFormed("<a/>text", "log: line 1: text where an element should be");
  NotWellFormed("<![CDATA[x]]>", "log: line 1: text where an element should be");
  NotWellFormed("<a", "log: line 1: <a> is not well formed");
  NotWellFormed("<a b='1'c='2'/>", "log: line 1: <a> is not well formed");
  NotWellFormed("< a/>", "log: line 1: a name is missing");
  NotWellFormed("<a =''/>", "log: line 1: a name is missing");
  NotWellFormed("<a b/>", "log: line 1: an attribute has no value");
  NotWellFormed("<a b=1/>", "log: line 1: an attribute's value is not quoted");
  NotWellFormed("<a b='1/>", "log: line 1: an attribute's value has no end");
  NotWellFormed("<a b='<'/>", "log: line 1: an attribute's value holds a <");
  NotWellFormed("<a></a", "log: line 1: the end of an element is not well formed");
  NotWellFormed("<a>\n<!-- >", "log: line 2: a comment or processing instruction has no end");
  NotWellFormed("<a><![CDATA[", "log: line 1: CDATA has no end");
  NotWellFormed("<!DOCTYPE a><a/>", "log: line 1: a declaration, which event logs do not have");
  for (const char* reference : {"&", "&;", "&x;", "&#;", "&#x;", "&#x110000;", "&#65", "&#6 5;"}) {
    NotWellFormed("<a>" + std::string(reference) + "</a>",
                  "log: line 1: an & that stands for no character");
  }
}

TEST_CASE("XML that is cut off anywhere within an element is refused") {
  constexpr std::string_view kXml = "<a b='1'><!-- c --><d>&amp;</d><![CDATA[e]]><f g=\"2\"/></a>";
  for (size_t length = 1; length < kXml.size(); ++length) {
    CAPTURE(length);
    CHECK_THROWS_AS(Read(kXml.substr(0, length)), EventLogError);
  }
}

}  // namespace dozewell
