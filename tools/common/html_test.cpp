#include "common/html.h"

#include <doctest/doctest.h>

namespace dozewell {

TEST_CASE("text that would be markup is shown as it is") {
  CHECK(HtmlText("<b title=\"x\">Tom & 'Eve'</b>") ==
        "&lt;b title=&quot;x&quot;&gt;Tom &amp; &#39;Eve&#39;&lt;/b&gt;");
  CHECK(HtmlText("&amp; grün") == "&amp;amp; grün");
  CHECK(HtmlText("") == "");
}

TEST_CASE("an element holds its content as it stands and its attributes escaped") {
  CHECK(HtmlElement("p", "a<br>b") == "<p>a<br>b</p>");
  CHECK(HtmlElement("td", {{"class", "unknown"}, {"title", "\"<\""}}, "") ==
        "<td class=\"unknown\" title=\"&quot;&lt;&quot;\"></td>");
}

}  // namespace dozewell
