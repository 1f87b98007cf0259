#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "common/input_file.h"
#include "common/named_file.h"
#include "common/optimizer_inputs.h"
#include "common/option_text.h"
#include "common/output_file.h"
#include "common/problem_place.h"
#include "common/standard_stream.h"
#include "fleet/crew.h"
#include "fleet/energy.h"
#include "fleet/find_histories.h"
#include "fleet/groups.h"
#include "fleet/judge.h"
#include "fleet/ordered_rows.h"
#include "fleet/page.h"
#include "fleet/partial_file.h"
#include "fleet/partial_merge.h"
#include "fleet/result_text.h"
#include "fleet/totals.h"
#include "replay/commands.h"
#include "replay/progress_bar.h"
#include "replay/search_habits.h"
#include "replay/taken_settings.h"

namespace dozewell::replay {
namespace {

using fleet::FleetQuestion;
using fleet::FoundHistory;
using fleet::MachineRow;

// "2/8" as a part. Throws ToolError.
fleet::FleetPart PartOf(const std::optional<std::string>& text) {
  constexpr int64_t kMostParts = 100000;
  if (!text) return {};
  const size_t slash = std::min(text->find('/'), text->size() - 1);
  const auto number = ParseNumber<int64_t>(text->substr(0, slash));
  const auto of = ParseNumber<int64_t>(text->substr(slash + 1));
  if (number && of && *number >= 1 && *number <= *of && *of <= kMostParts) return {*number, *of};
  throw ToolError(WrongValue("--part", "K/N with K from 1 to N, such as 2/8", *text));
}

int ThreadsOf(const std::optional<std::string>& text) {
  constexpr int kMost = 1024;
  return text ? ParseNumberOption<int>("--threads", *text, 1, kMost) : fleet::ProcessorCount();
}

fleet::Groups GroupsOf(const std::optional<std::string>& name) {
  if (!name) return {};
  const std::vector<unsigned char> content = ReadInput(*name);
  return fleet::Groups(AsText(content), *name);
}

// Throws ToolError for options that make no sense together.
void RequireSense(const Options& options) {
  const auto refuse = [](const char* option, const char* why) {
    throw ToolError(std::string(option) + ": " + why);
  };
  if (options.partial && IsStandardStream(*options.partial)) {
    refuse("--partial", "needs a file");
  }
  if (options.resume && !options.partial) refuse("--resume", "needs --partial");
  if (options.part && !options.partial) refuse("--part", "needs --partial");
  if (!options.merge) return;
  constexpr const char* kAlreadyAnswered = "with --merge, it is that of the partial results";
  if (options.settings) refuse("--settings", kAlreadyAnswered);
  if (options.hibernateAfter) refuse("--hibernate-after", kAlreadyAnswered);
  if (options.part) refuse("--part", kAlreadyAnswered);
  if (options.resume) refuse("--resume", "a merge begins anew");
}

// No output may be a file that is read or another output.
void RequireNoOverwriting(const Options& options, const std::vector<std::string>& inputs) {
  const std::pair<const char*, std::optional<std::string>> outputs[] = {
      {"--out", options.out}, {"--csv", options.csv}, {"--partial", options.partial}};
  for (const auto& [option, name] : outputs) {
    if (!name) continue;
    RequireNoInput(*name, {{"--settings", options.settings}, {"--groups", options.groups}});
    for (const auto& [other, otherName] : outputs) {
      if (other != option) RequireNoInput(*name, {{other, otherName}});
    }
    // A file that is not there yet is none of many that are.
    if (LookUp(PathFromSystem(*name)).kind == FileKind::Missing) continue;
    for (const std::string& input : inputs) {
      RequireNoInput(*name, {{"one of the histories or results", input}});
    }
  }
}

FleetQuestion QuestionOf(const Options& options, Results& results) {
  FileConfigurations configuration = TakeSettings(options, results);
  const auto place = [&] {
    return PlaceOfSearchProblem(configuration, {configuration.Name(), configuration.Name()});
  };
  FleetQuestion question = TellPlace(place, [&] {
    return fleet::Ask(configuration, HibernateAfterSeconds(options.hibernateAfter),
                      HabitsOf(configuration));
  });
  question.version = results.identity.version;
  question.settings = results.identity.settings.value_or("");
  question.part = PartOf(options.part);
  return question;
}

// The histories of the part that is asked for.
std::vector<FoundHistory> HistoriesOf(const Options& options, const fleet::FleetPart& part) {
  std::vector<FoundHistory> all = fleet::FindHistories(options.folders);
  std::vector<std::string> paths;
  paths.reserve(all.size());
  for (const FoundHistory& found : all) paths.push_back(found.path);
  RequireNoOverwriting(options, paths);
  const auto border = [&](int64_t number) { return std::ssize(all) * number / part.of; };
  return {all.begin() + border(part.number - 1), all.begin() + border(part.number)};
}

// Where the rows of a run go.
class Sink {
 public:
  Sink(const Options& options, fleet::FleetTotals& totals)
      : totals_(totals), keepsRows_(options.csv && !options.partial && !options.merge) {}

  void Take(MachineRow row) {
    totals_.Add(row);
    if (partial_) partial_->Write(row);
    if (keepsRows_) kept_.push_back(std::move(row));
  }
  void Begin(fleet::PartialWriter partial) { partial_.emplace(std::move(partial)); }
  void End() {
    if (partial_) partial_->WriteEnd();
    partial_.reset();
  }

  // The rows for a table, if no file has them.
  const std::vector<MachineRow>& Kept() const { return kept_; }

 private:
  fleet::FleetTotals& totals_;
  bool keepsRows_;
  std::optional<fleet::PartialWriter> partial_;
  std::vector<MachineRow> kept_;
};

// Takes the machines of a partial result and goes on with it; returns how many there are. When the
// run has ended already, nothing is written any more.
size_t Resume(const std::string& name, const FleetQuestion& question,
              const std::vector<FoundHistory>& histories, Sink& sink) {
  fleet::PartialReader reader(name);
  if (reader.Question() != question) {
    throw ToolError(name + ": was begun with other settings, another timeout, part or version");
  }
  size_t count = 0;
  while (std::optional<MachineRow> row = reader.Next()) {
    if (count == histories.size() || histories[count].shown != row->path) {
      throw ToolError(name + ": was begun with other histories; " + row->path + " is not next");
    }
    ++count;
    sink.Take(*std::move(row));
  }
  if (reader.IsComplete()) {
    if (count < histories.size()) throw ToolError(name + ": was ended with fewer histories");
  } else {
    sink.Begin(fleet::PartialWriter(reader, static_cast<int64_t>(count)));
  }
  return count;
}

void RunAll(const Options& options, const FleetQuestion& question, Sink& sink) {
  const std::vector<FoundHistory> histories = HistoriesOf(options, question.part);
  size_t first = 0;
  if (options.resume && LookUp(PathFromSystem(*options.partial)).kind != FileKind::Missing) {
    first = Resume(*options.partial, question, histories, sink);
  } else if (options.partial) {
    sink.Begin(fleet::PartialWriter(*options.partial, question));
  }
  const SettingsFile settings = LoadSettings(options.settings);
  const auto judge = [&](size_t i) {
    std::vector<std::string> ignored;  // QuestionOf has told of them
    FileConfigurations configuration(settings, ignored);
    return fleet::Judge(histories[i], configuration, question);
  };
  ProgressBar progress(histories.size() - first, options.progress);
  fleet::InOrder(first, histories.size(), ThreadsOf(options.threads), judge, [&](MachineRow row) {
    sink.Take(std::move(row));
    progress.Step();
  });
}

void MergeAll(const Options& options, fleet::PartialMerge& merge, Sink& sink) {
  if (options.partial) sink.Begin(fleet::PartialWriter(*options.partial, merge.Question()));
  while (std::optional<MachineRow> row = merge.Next()) sink.Take(*std::move(row));
}

void WriteCsv(const Options& options, const FleetQuestion& question, const Sink& sink,
              const fleet::EnergyRates& rates) {
  OutputFile file(*options.csv);
  const auto append = [&file](const std::string& text) { file.Append(text.data(), text.size()); };
  append(fleet::CsvHead(question));
  const auto appendRow = [&](const MachineRow& row) {
    append(fleet::CsvLine(row, question, rates));
  };
  if (options.merge) {
    fleet::PartialMerge merge(options.folders);
    while (const auto row = merge.Next()) appendRow(*row);
  } else if (options.partial) {
    fleet::PartialReader reader(*options.partial);
    while (const auto row = reader.Next()) appendRow(*row);
  } else {
    std::ranges::for_each(sink.Kept(), appendRow);
  }
  file.Commit();
}

void Tell(const fleet::FleetTotals& totals, Results& results) {
  const auto tell = [&results](const auto& list) {
    for (const auto& [path, what] : list) {
      results.warnings.push_back(std::string(path).append(": ").append(what));
    }
  };
  tell(totals.Broken());
  tell(totals.Damaged());
}

}  // namespace

void RunFleet(const Options& options, Results& results) {
  RequireSense(options);
  const fleet::EnergyRates rates = {
      fleet::ParseRate("--watts-asleep", options.wattsAsleep, fleet::kDefaultWattsAsleep),
      fleet::ParseRate("--watts-hibernated", options.wattsHibernated,
                       fleet::kDefaultWattsHibernated),
      fleet::ParseRate("--price", options.price, fleet::kDefaultPrice)};
  const fleet::Groups groups = GroupsOf(options.groups);
  std::optional<fleet::PartialMerge> merge;
  if (options.merge) {
    RequireNoOverwriting(options, options.folders);
    merge.emplace(options.folders);
  }
  const FleetQuestion question = merge ? merge->Question() : QuestionOf(options, results);

  fleet::FleetTotals totals(question, groups);
  Sink sink(options, totals);
  if (merge) {
    MergeAll(options, *merge, sink);
  } else {
    RunAll(options, question, sink);
  }
  sink.End();
  Tell(totals, results);
  if (options.csv) WriteCsv(options, question, sink, rates);
  if (options.out) {
    const std::string page = fleet::MakePage(totals, rates);
    OutputFile(*options.out).Write(page.data(), page.size());
  }
  results.output =
      options.json ? JsonLine(fleet::TotalsJson(totals)) : fleet::TotalsText(totals, rates);
}

}  // namespace dozewell::replay
