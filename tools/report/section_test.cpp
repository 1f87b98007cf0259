#include "report/section.h"

#include <doctest/doctest.h>

namespace dozewell::report {

TEST_CASE("a section is named by its title and shows texts as they are") {
  CHECK(Section("id", "A & B", "What <it> is.", "<p>figure</p>") ==
        "<section id=\"id\" aria-labelledby=\"id-title\"><h2 id=\"id-title\">A &amp; B</h2>"
        "<p class=\"explanation\">What &lt;it&gt; is.</p><p>figure</p></section>\n");
  CHECK(Paragraph("<b>") == "<p>&lt;b&gt;</p>");
}

TEST_CASE("an axis labels every third hour") {
  CHECK(HourAxis() ==
        "<div class=\"axis\" aria-hidden=\"true\"><span>00</span><span>03</span><span>06</span>"
        "<span>09</span><span>12</span><span>15</span><span>18</span><span>21</span></div>");
}

TEST_CASE("a legend names what a colour stands for") {
  CHECK(LegendEntry("use", "in use") == "<li><i class=\"swatch use\"></i>in use</li>");
}

}  // namespace dozewell::report
