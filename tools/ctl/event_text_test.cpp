#include "ctl/event_text.h"

#include <doctest/doctest.h>

#include "ctl/fakes/utc_time_fake.h"

namespace dozewell::ctl {
namespace {

// Events of a source that is not registered, in the event log's XML.
constexpr const char* kInformation =
    "<Event xmlns='http://schemas.microsoft.com/win/2004/08/events/event'><System>"
    "<Provider Name='Dozewell Service'/><EventID Qualifiers='0'>0</EventID><Level>4</Level>"
    "<Task>0</Task><Keywords>0x80000000000000</Keywords>"
    "<TimeCreated SystemTime='2026-11-21T08:05:09.1234567Z'/><EventRecordID>4711</EventRecordID>"
    "<Channel>Application</Channel><Computer>DESK</Computer><Security/></System>"
    "<EventData><Data>21/11/2026 8:5:9 - Activating</Data></EventData></Event>";
constexpr const char* kError =
    "<Event xmlns=\"http://schemas.microsoft.com/win/2004/08/events/event\">\r\n  <System>\r\n"
    "    <Provider Name=\"Dozewell Service\" />\r\n    <EventID Qualifiers=\"0\">0</EventID>\r\n"
    "    <Version>0</Version>\r\n    <Level>2</Level>\r\n    <Task>0</Task>\r\n"
    "    <TimeCreated SystemTime=\"2026-07-01T22:30:00.000000000Z\" />\r\n"
    "    <EventRecordID>4712</EventRecordID>\r\n    <Correlation />\r\n  </System>\r\n"
    "  <EventData>\r\n    <Data>RpcServerListen returned: 0x6b5\n</Data>\r\n"
    "    <Binary></Binary>\r\n  </EventData>\r\n</Event>";

std::string WithData(const std::string& data) {
  return "<Event><System><Level>4</Level></System><EventData>" + data + "</EventData></Event>";
}

std::string TextOf(const std::string& data) { return ParseEventXml(WithData(data)).text; }

}  // namespace

TEST_CASE("an event has its time, level and text") {
  CHECK(ParseEventXml(kInformation) ==
        ServiceEvent{1795248309, 4, "21/11/2026 8:5:9 - Activating"});
  CHECK(ParseEventXml(kError) == ServiceEvent{1782945000, 2, "RpcServerListen returned: 0x6b5"});
}

TEST_CASE("an event's line and object give the time of this machine") {
  fakes::utcOffsetSeconds = 3600;
  CHECK(EventLine(ParseEventXml(kInformation)) ==
        "2026-11-21 09:05:09  information  21/11/2026 8:5:9 - Activating\n");
  CHECK(JsonLine(EventJson(ParseEventXml(kInformation))) ==
        "{\"time\":\"2026-11-21T09:05:09\",\"level\":\"information\","
        "\"text\":\"21/11/2026 8:5:9 - Activating\",\"utcSeconds\":1795248309}\n");
  fakes::utcOffsetSeconds = 7200;
  CHECK(EventLine(ParseEventXml(kError)) ==
        "2026-07-02 00:30:00  error        RpcServerListen returned: 0x6b5\n");
  CHECK(JsonLine(EventJson(ParseEventXml(kError))) ==
        "{\"time\":\"2026-07-02T00:30:00\",\"level\":\"error\","
        "\"text\":\"RpcServerListen returned: 0x6b5\",\"utcSeconds\":1782945000}\n");
  fakes::utcOffsetSeconds = 0;
}

TEST_CASE("levels have the event log's names") {
  const auto level = [](const char* number) {
    return EventLine(ParseEventXml("<Level>" + std::string(number) + "</Level>")).substr(21, 11);
  };
  CHECK(level("0") == "information");
  CHECK(level("1") == "critical   ");
  CHECK(level("2") == "error      ");
  CHECK(level("3") == "warning    ");
  CHECK(level("4") == "information");
  CHECK(level("x") == "information");
}

TEST_CASE("an event's text has no XML left in it") {
  CHECK(TextOf("<Data>a &lt;b&gt; &amp;&quot;c&apos; &#65;&#x42;&#xFC;</Data>") ==
        "a <b> &\"c' AB\xC3\xBC");
  CHECK(TextOf("<Data>&amp;lt;</Data>") == "&lt;");
  CHECK(TextOf("<Data>one</Data><Data>a & b</Data>") == "one");
  CHECK(TextOf("<Data Name='x'>named</Data>") == "named");
  CHECK(TextOf("<Data>one</Data><Data>two</Data>") == "one two");
  CHECK(TextOf("<Data>one</Data><Data/>") == "one ");
  CHECK(TextOf("<DataItem>no</DataItem><Data>yes</Data>") == "yes");
  CHECK(TextOf("<Data/>") == "");
  CHECK(TextOf("") == "");
}

TEST_CASE("an event's line is one line") {
  const ServiceEvent event = ParseEventXml(WithData("<Data>one\r\ntwo\x1b[2J\r\n</Data>"));
  CHECK(event.text == "one\r\ntwo\x1b[2J");
  CHECK(EventLine(event) == "at an unknown time   information  one  two [2J\n");
  CHECK(JsonLine(EventJson(event)) ==
        "{\"time\":null,\"level\":\"information\","
        "\"text\":\"one\\r\\ntwo\\u001b[2J\",\"utcSeconds\":null}\n");
}

TEST_CASE("an event's line has no character that steers a terminal") {
  // A control of Latin-1 that begins a command, and one that reverses the direction of writing.
  const ServiceEvent event = ParseEventXml(WithData("<Data>a&#x9B;2Jb&#x202E;c\xC2\x85</Data>"));
  CHECK(EventLine(event) == "at an unknown time   information  a 2Jb c \n");
  CHECK(JsonLine(EventJson(event)) ==
        "{\"time\":null,\"level\":\"information\","
        "\"text\":\"a\\u009b2Jb\\u202ec\\u0085\",\"utcSeconds\":null}\n");
}

TEST_CASE("an event whose XML is cut off anywhere is still an event") {
  const std::string whole = kInformation;
  for (size_t length = 0; length < whole.size(); ++length) {
    CAPTURE(length);
    const ServiceEvent event = ParseEventXml(whole.substr(0, length));
    CHECK((event.text.empty() || event.text == "21/11/2026 8:5:9 - Activating"));
    CHECK((!event.utcSeconds || event.utcSeconds == 1795248309));
  }
}

}  // namespace dozewell::ctl
