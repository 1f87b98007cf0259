#include "fleet/partial_file.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <iterator>
#include <limits>
#include <utility>

#include "common/json.h"
#include "common/messages.h"
#include "common/named_file.h"
#include "common/tool_error.h"

namespace dozewell::fleet {
namespace {

constexpr const char* kMark = "dozewellFleet";
constexpr int kFormat = 1;
constexpr const char* kEndKey = "machines";

Json RowJson(const MachineRow& row) {
  Json outcomes = Json::array();
  for (const Outcomes& outcome : row.outcomes) {
    outcomes.push_back(Json::array({outcome.sleepSeconds, outcome.hibernateSeconds,
                                    outcome.resumesFromSleep, outcome.resumesFromHibernate}));
  }
  return {{"path", row.path},
          {"reason", row.reason},
          {"damage", row.damage},
          {"records", row.records},
          {"from", row.from},
          {"to", row.to},
          {"bounds", row.bounds ? Json::array({row.bounds->low, row.bounds->high}) : Json()},
          {"outcomes", outcomes}};
}

template <typename Number>
Number CountOf(const Json& json) {
  const auto number = json.get<int64_t>();
  if (number < 0 || number > std::numeric_limits<Number>::max()) {
    throw ToolError("no count: " + std::to_string(number));
  }
  return static_cast<Number>(number);
}

Outcomes OutcomesOf(const Json& json) {
  return {CountOf<int64_t>(json.at(0)), CountOf<int64_t>(json.at(1)), CountOf<int32_t>(json.at(2)),
          CountOf<int32_t>(json.at(3))};
}

MachineRow RowOf(const Json& json) {
  MachineRow row = {json.at("path").get<std::string>(), json.at("reason").get<std::string>(),
                    json.at("damage").get<std::string>()};
  row.records = CountOf<int64_t>(json.at("records"));
  row.from = json.at("from").get<int64_t>();
  row.to = json.at("to").get<int64_t>();
  if (const Json& bounds = json.at("bounds"); !bounds.is_null()) {
    row.bounds = {bounds.at(0).get<int64_t>(), bounds.at(1).get<int64_t>()};
  }
  for (const Json& outcome : json.at("outcomes")) row.outcomes.push_back(OutcomesOf(outcome));
  return row;
}

// Copies the whole lines of a partial result into its place.
void CutToWholeLines(const PartialReader& read) {
  const std::wstring path = PathFromSystem(read.Name());
  const std::wstring kept = path + L".whole";
  File from = OpenFile(path, "rb");
  File to = OpenFile(kept, "wb");
  std::array<char, 65536> bytes;
  bool isCopied = from && to;
  for (int64_t left = read.WholeBytes(); isCopied && left > 0;) {
    const auto portion = static_cast<size_t>(std::min(left, std::ssize(bytes)));
    isCopied = std::fread(bytes.data(), 1, portion, from.get()) == portion &&
               std::fwrite(bytes.data(), 1, portion, to.get()) == portion;
    left -= static_cast<int64_t>(portion);
  }
  from.reset();  // Windows does not put another file in the place of an open one
  if (!isCopied || !WriteAndFlush(std::move(to), nullptr, 0) || !MoveOver(path, kept)) {
    const ToolError error(WithReason(read.Name() + ": cannot be written"));
    RemoveFile(kept);
    throw error;
  }
}

}  // namespace

PartialReader::PartialReader(std::string name) : name_(std::move(name)) {
  errno = 0;
  file_ = OpenFile(PathFromSystem(name_), "rb");
  if (!file_) throw ToolError(WithReason(name_ + ": cannot be read"));
  try {
    const Json head = Json::parse(NextLine().value_or(""));
    if (head.at(kMark) != kFormat) throw ToolError("another format");
    question_ = QuestionOf(head.at("question"));
  } catch (const std::exception&) {
    throw ToolError(name_ + ": no partial result of fleet");
  }
}

std::optional<std::string> PartialReader::NextLine() {
  std::string line;
  std::array<char, 65536> portion;
  while (file_ &&
         std::fgets(portion.data(), static_cast<int>(portion.size()), file_.get()) != nullptr) {
    line += portion.data();
    if (!line.ends_with('\n')) continue;
    ++line_;
    wholeBytes_ += std::ssize(line);
    return line;
  }
  if (file_ && std::ferror(file_.get()) != 0) {
    throw ToolError(WithReason(name_ + ": cannot be read"));
  }
  // Windows does not put another file in the place of an open one.
  file_.reset();
  hasRest_ = hasRest_ || !line.empty();
  return std::nullopt;
}

std::optional<MachineRow> PartialReader::Understand(const std::string& line) {
  if (isComplete_) throw ToolError("more after the end");
  const Json json = Json::parse(line);
  if (json.contains(kEndKey)) {
    if (json.at(kEndKey) != machines_) throw ToolError("another number of machines");
    isComplete_ = true;
    return std::nullopt;
  }
  MachineRow row = RowOf(json);
  const size_t expected = row.reason.empty() ? question_.choices.size() : 0;
  if (row.outcomes.size() != expected) throw ToolError("not one outcome for each choice");
  if (row.path < lastPath_) throw ToolError("not in the order of the paths");
  lastPath_ = row.path;
  ++machines_;
  return row;
}

std::optional<MachineRow> PartialReader::Next() {
  while (const std::optional<std::string> line = NextLine()) {
    try {
      if (std::optional<MachineRow> row = Understand(*line)) return row;
    } catch (const std::exception& error) {
      throw ToolError(name_ + ": line " + std::to_string(line_) + ": damaged: " + error.what());
    }
  }
  return std::nullopt;
}

PartialWriter::PartialWriter(std::string name, const FleetQuestion& question)
    : name_(std::move(name)) {
  const std::wstring path = PathFromSystem(name_);
  const FileKind kind = LookUp(path).kind;
  if (kind == FileKind::Other) {
    throw ToolError(name_ + ": cannot be written: not a regular file");
  }
  if (kind == FileKind::Regular) static_cast<void>(PartialReader(name_));
  errno = 0;
  file_ = OpenFile(path, "wb");
  WriteLine(JsonLine({{kMark, kFormat}, {"question", QuestionJson(question)}}));
}

PartialWriter::PartialWriter(const PartialReader& read, int64_t machines)
    : name_(read.Name()), machines_(machines) {
  errno = 0;
  if (read.HasRest()) CutToWholeLines(read);
  file_ = OpenFile(PathFromSystem(name_), "ab");
}

void PartialWriter::Write(const MachineRow& row) {
  WriteLine(JsonLine(RowJson(row)));
  ++machines_;
}

void PartialWriter::WriteEnd() { WriteLine(JsonLine({{kEndKey, machines_}})); }

void PartialWriter::WriteLine(const std::string& line) {
  errno = 0;
  if (!file_ || std::fwrite(line.data(), 1, line.size(), file_.get()) != line.size() ||
      std::fflush(file_.get()) != 0) {
    throw ToolError(WithReason(name_ + ": cannot be written"));
  }
}

}  // namespace dozewell::fleet
