#include "report/section.h"

#include <doctest/doctest.h>

#include <string>

namespace dozewell::report {

TEST_CASE("a section is named by its title and shows texts as they are") {
  const Section section = MakeSection("id", "A & B", "What <it> is.", "<p>figure</p>");
  CHECK(section.id == std::string("id"));
  CHECK(section.title == "A & B");
  CHECK(section.html ==
        "<section id=\"id\" aria-labelledby=\"id-title\"><h2 id=\"id-title\">A &amp; B</h2>"
        "<p class=\"explanation\">What &lt;it&gt; is.</p><p>figure</p></section>\n");
  CHECK(Paragraph("<b>") == "<p>&lt;b&gt;</p>");
}

TEST_CASE("an axis labels every third hour") {
  CHECK(HourAxis() ==
        "<div class=\"axis\" aria-hidden=\"true\"><span>00</span><span>03</span><span>06</span>"
        "<span>09</span><span>12</span><span>15</span><span>18</span><span>21</span></div>");
}

TEST_CASE("a fold has a title and its content") {
  CHECK(Fold("A & B", "<p>it</p>") == "<details><summary>A &amp; B</summary><p>it</p></details>");
}

TEST_CASE("a list is a table of two columns, named by its caption") {
  CHECK(ListTable("A & B", "Day", "Times", ListRow("<Mon>", "9 < 10")) ==
        "<table class=\"list\"><caption>A &amp; B</caption><thead><tr><th scope=\"col\">Day</th>"
        "<th scope=\"col\">Times</th></tr></thead><tbody><tr><th scope=\"row\">&lt;Mon&gt;</th>"
        "<td>9 &lt; 10</td></tr>\n</tbody></table>");
}

TEST_CASE("a legend names what a colour stands for") {
  CHECK(LegendEntry("use", "in use") == "<li><i class=\"swatch use\"></i>in use</li>");
  CHECK(Legend("<li></li>") == "<ul class=\"legend\"><li></li></ul>");
}

}  // namespace dozewell::report
