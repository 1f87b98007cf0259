#include "ctl/metrics_text.h"

#include <doctest/doctest.h>

namespace dozewell::ctl {

TEST_CASE("a metric is written with its help, its type and its samples") {
  MetricsText metrics;
  metrics.Add("up", "Whether it is.", 1);
  metrics.Add("timeout_seconds", "How long.",
              std::vector<Sample>{{{"source", "ac"}, "60"}, {{"source", "dc"}, kInfinity}});
  CHECK(metrics.Text() ==
        "# HELP dozewell_up Whether it is.\n"
        "# TYPE dozewell_up gauge\n"
        "dozewell_up 1\n"
        "# HELP dozewell_timeout_seconds How long.\n"
        "# TYPE dozewell_timeout_seconds gauge\n"
        "dozewell_timeout_seconds{source=\"ac\"} 60\n"
        "dozewell_timeout_seconds{source=\"dc\"} +Inf\n");
}

TEST_CASE("a sample without a number is left out, and so is a metric without a sample") {
  MetricsText metrics;
  metrics.Add("up", "Whether it is.", std::nullopt);
  metrics.Add("off", "Whether.", std::vector<Sample>{{{"a", "b"}, std::nullopt}});
  CHECK(metrics.Text().empty());
  metrics.Add("on", "Whether.", std::vector<Sample>{{{"a", "b"}, std::nullopt}, {{"a", "c"}, "0"}});
  CHECK(metrics.Text() ==
        "# HELP dozewell_on Whether.\n# TYPE dozewell_on gauge\ndozewell_on{a=\"c\"} 0\n");
}

TEST_CASE("a label's value may hold any character") {
  MetricsText metrics;
  metrics.Add("name", "What.", std::vector<Sample>{{{"is", "a\\b \"c\"\nd"}, "1"}});
  CHECK(metrics.Text().ends_with("dozewell_name{is=\"a\\\\b \\\"c\\\"\\nd\"} 1\n"));
}

}  // namespace dozewell::ctl
