// Saves what the service has learnt while its process ends, or a call of the system fails, at every
// step in turn, and looks at what a next start finds. Driven by power_cut_test.py:
//
//   power_cut steps SAVE SITUATION FOLDER      prints how many calls of the system a save makes
//   power_cut cut SAVE SITUATION FOLDER CALL   ends at that call of it
//   power_cut check SAVE SITUATION FOLDER...   is what starts next in these folders
//   power_cut fail SAVE SITUATION FOLDER       has each call fail in turn
//   power_cut medium SAVE FOLDER               cannot read the file any more
//   power_cut loop SAVE SITUATION FOLDER       saves until it is ended, and prints how often it did
//   power_cut after SAVE FOLDER COUNT          is what starts next after so many saves at least
//
// What is not as it must be is printed, and the exit code is 1.

#include <cstdio>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/durable_file.h"
#include "base/exception.h"
#include "base/numbers.h"
#include "controller/engine.h"
#include "power_cut/system_steps.h"
#include "prediction/arbitrary_cycle_probability_tracker.h"
#include "prediction/cyclic_probability_predictor.h"
#include "prediction/history_file.h"
#include "prediction/history_recorder.h"
#include "prediction/rates/rates_file.h"
#include "settings/setting_names.h"
#include "stress/quiet_machine.h"

namespace dozewell::power_cut {
namespace {

using Bytes = std::vector<unsigned char>;

int failures = 0;

void Expect(bool holds, const std::string& text) {
  if (holds) return;
  std::printf("%s\n", text.c_str());
  ++failures;
}

// The n-th of the events that are learnt: every hour the machine comes into use or leaves it.
constexpr int64_t kFirstEvent = 1795219200;  // 2026-11-21 00:00
int64_t TimeOf(int event) { return kFirstEvent + event * int64_t{3600}; }
bool IsSuspend(int event) { return event % 2 != 0; }

// One of the files, what it holds after the first so many events, and how more are saved.
class Save {
 public:
  virtual ~Save() = default;

  virtual const wchar_t* FileName() const = 0;
  virtual Bytes FileOf(int events) const = 0;

  // Takes up the work in the data folder, as a start does.
  virtual void Start() = 0;
  // Adds an event, and saves all that were added and could not be saved.
  virtual void Add(int event) = 0;
  virtual void SaveAll() = 0;
};

class HistorySave : public Save {
 public:
  const wchar_t* FileName() const override { return kHistoryFileName; }
  Bytes FileOf(int events) const override {
    Bytes bytes(static_cast<size_t>(events) * sizeof(HistoryRecord));
    for (int event = 0; event < events; ++event) {
      const HistoryRecord record = {static_cast<double>(TimeOf(event)), IsSuspend(event) ? 1U : 0U,
                                    0};
      std::memcpy(bytes.data() + static_cast<size_t>(event) * sizeof(record), &record,
                  sizeof(record));
    }
    return bytes;
  }
  void Start() override { ClearPendingHistory(); }
  void Add(int event) override { AppendToHistory(TimeOf(event), IsSuspend(event)); }
  void SaveAll() override { AH_SaveHistory(); }
};

class DataSave : public Save {
 public:
  const wchar_t* FileName() const override { return kDataFileName; }
  Bytes FileOf(int events) const override {
    ConfigurationsImpl configurations;
    ArbitraryCycleProbabilityTracker tracker(&configurations);
    for (int event = 0; event < events; ++event) tracker.ProcessEvent(EventOf(event));
    const TrackerData& data = *tracker.GetData();
    Bytes bytes(static_cast<size_t>(TrackerDataSize(data.slotCount)));
    std::memcpy(bytes.data(), &data, bytes.size());
    return bytes;
  }
  void Start() override {
    objects_.predictor.reset();
    objects_.configurations = std::make_unique<ConfigurationsImpl>();
    objects_.historian = std::make_unique<HistorianImpl>();
    objects_.RenewPredictor();
  }
  void Add(int event) override { objects_.historian->NotifyListener(EventOf(event)); }
  // As every day: what was saved is read again.
  void SaveAll() override {
    objects_.historian->NotifyListener({{}, ContainerStopped});
    objects_.RenewPredictor();
  }

 private:
  static TimeLineEvent EventOf(int event) {
    TimeLineEvent timeLineEvent = {{}, IsSuspend(event) ? Suspend : Activating};
    TmFromSeconds(TimeOf(event), timeLineEvent.time);
    return timeLineEvent;
  }

  EngineObjects objects_;
};

// The data file is saved beside it each time.
class RatesSave : public DataSave {
 public:
  RatesSave() { quiet::predictors = {kRatesPredictor}; }

  const wchar_t* FileName() const override { return kRatesFileName; }
  Bytes FileOf(int events) const override {
    const auto state = std::make_unique<RatesState>();
    for (int event = 0; event < events; ++event) {
      state->Take(IsSuspend(event) ? Suspend : Activating, TimeOf(event));
    }
    return RatesFileOf(*state);
  }
  // The data file of an earlier save makes the predictor of slots refuse older events, which the
  // controller would log.
  void Add(int event) override {
    try {
      DataSave::Add(event);
    } catch (const FixedTextException&) {
      return;
    }
  }
};

std::unique_ptr<Save> SaveOf(const std::string& name) {
  if (name == "rates") return std::make_unique<RatesSave>();
  if (name == "history") return std::make_unique<HistorySave>();
  return std::make_unique<DataSave>();
}

// What is found in the folder, and what the save meets there.
struct Situation {
  explicit Situation(const std::string& name)
      : exists(name != "first"), isTorn(name.starts_with("torn")), isHeld(name.ends_with("held")) {}

  bool exists;
  bool isTorn;  // and what is whole waits beside it
  bool isHeld;
};

constexpr int kOldEvents = 41;
constexpr int kNewEvents = 44;

// A save in a folder.
class Scene {
 public:
  Scene(const std::string& save, const std::string& situation, const std::string& folder)
      : save_(SaveOf(save)), situation_(situation) {
    const std::wstring name = PathFromSystem(folder);
    quiet::dataFolder = name + L"\\";
    path_ = quiet::dataFolder + save_->FileName();
    old_ = situation_.exists ? save_->FileOf(kOldEvents) : Bytes();
    new_ = save_->FileOf(kNewEvents);
  }

  void Prepare() {
    RemoveDurableFile(path_);
    if (situation_.exists) {
      const size_t size = situation_.isTorn ? old_.size() / 2 + 5 : old_.size();
      WriteWholeFile(path_, old_.data(), size);
    }
    if (situation_.isTorn) WriteWholeFile(path_ + L".new", old_.data(), old_.size());
    if (situation_.isHeld) Hold();
  }
  // The predictor of the first save has nothing before it.
  void StartAndAdd() {
    save_->Start();
    for (int event = situation_.exists ? kOldEvents : 0; event < kNewEvents; ++event) {
      save_->Add(event);
    }
  }
  int SaveWith(Trouble trouble, int call) {
    BeginSteps(trouble, call);
    save_->SaveAll();
    return EndSteps();
  }
  // The start meets the trouble, too.
  int StartAndSaveWith(Trouble trouble, int call) {
    BeginSteps(trouble, call);
    StartAndAdd();
    save_->SaveAll();
    return EndSteps();
  }

  // Old or new, and nothing else, counts.
  void ExpectOldOrNew(const std::string& when) const {
    const FileContent content = ReadDurableFile(path_);
    const bool isOld = situation_.exists ? !content.failure && content.bytes == old_
                                         : content.failure == FileFailure::Missing;
    Expect(isOld || (!content.failure && content.bytes == new_), "neither old nor new " + when);
  }
  // Saved once more without trouble, the new content stands in the file and nothing beside it.
  void ExpectSavedAgain(const std::string& when) {
    save_->SaveAll();
    ExpectFile(new_, when);
  }
  // As the next start: what is there is taken up, and a further event is saved.
  void ExpectGoesOn(const std::string& when) {
    const FileContent found = ReadDurableFile(path_);
    const int events = found.failure ? 0 : found.bytes == new_ ? kNewEvents : kOldEvents;
    save_->Start();
    save_->Add(events);
    save_->SaveAll();
    ExpectFile(save_->FileOf(events + 1), when);
  }

  void Hold() { holder_.emplace(path_); }
  void Release() { holder_.reset(); }
  const std::wstring& Path() const { return path_; }
  Save& It() { return *save_; }

 private:
  void ExpectFile(const Bytes& bytes, const std::string& when) const {
    const FileContent content = ReadContent(path_);
    Expect(!content.failure && content.bytes == bytes, "not the whole content " + when);
    for (const wchar_t* const suffix : kSideFileSuffixes) {
      Expect(ReadContent(path_ + suffix).failure == FileFailure::Missing,
             "something is beside the file " + when);
    }
  }

  std::unique_ptr<Save> save_;
  Situation situation_;
  std::wstring path_;
  Bytes old_;
  Bytes new_;
  std::optional<Holder> holder_;
};

using Arguments = std::vector<std::string>;

void PrintSteps(const Arguments& arguments) {
  Scene scene(arguments.at(0), arguments.at(1), arguments.at(2));
  scene.Prepare();
  std::printf("%d\n", scene.StartAndSaveWith(Trouble::None, 0));
}

void Cut(const Arguments& arguments) {
  Scene scene(arguments.at(0), arguments.at(1), arguments.at(2));
  scene.Prepare();
  scene.StartAndSaveWith(Trouble::End, Atoi(arguments.at(3)));
  Expect(false, "the process did not end");
}

void Check(const Arguments& arguments) {
  for (size_t i = 2; i < arguments.size(); ++i) {
    Scene scene(arguments.at(0), arguments.at(1), arguments.at(i));
    scene.ExpectOldOrNew("in " + arguments.at(i));
    scene.ExpectGoesOn("in " + arguments.at(i));
  }
}

// Has a call after the other fail, until there are no more. Each run gives the calls it made.
template <typename Run>
void FailEachCall(Run run) {
  int call = 1;
  while (run(call) >= call) ++call;
  Expect(call > 10, "a save makes hardly any calls");
}

void FailInSave(const Arguments& arguments) {
  FailEachCall([&](int call) {
    const std::string when = "when call " + std::to_string(call) + " of the save failed";
    Scene scene(arguments.at(0), arguments.at(1), arguments.at(2));
    scene.Prepare();
    scene.StartAndAdd();
    const int calls = scene.SaveWith(Trouble::Fail, call);
    scene.ExpectOldOrNew(when);
    scene.ExpectSavedAgain(when);
    return calls;
  });
}

// A start never throws; what it could not read then, it keeps.
void FailInStart(const Arguments& arguments) {
  FailEachCall([&](int call) {
    const std::string when = "when call " + std::to_string(call) + " since the start failed";
    Scene scene(arguments.at(0), arguments.at(1), arguments.at(2));
    scene.Prepare();
    const int calls = scene.StartAndSaveWith(Trouble::Fail, call);
    scene.ExpectOldOrNew(when);
    scene.Release();
    scene.ExpectGoesOn(when);
    return calls;
  });
}

void Fail(const Arguments& arguments) {
  FailInSave(arguments);
  FailInStart(arguments);
}

// The file is set aside, in place of one that was before, and the new one begins with what is new.
void Medium(const Arguments& arguments) {
  Scene scene(arguments.at(0), "first", arguments.at(1));
  scene.Prepare();
  for (const int events : {kOldEvents, kNewEvents}) {
    const Bytes bytes = scene.It().FileOf(events);
    WriteWholeFile(scene.Path(), bytes.data(), bytes.size());
    BeginSteps(Trouble::ReadsFail, 1);
    scene.It().Start();
    scene.It().Add(events);
    scene.It().SaveAll();
    EndSteps();
    const FileContent aside = ReadContent(scene.Path() + L".unread");
    Expect(!aside.failure && aside.bytes == bytes, "the file is not set aside");
    const FileContent content = ReadContent(scene.Path());
    Expect(!content.failure && !content.bytes.empty() && content.bytes != bytes,
           "nothing new is saved");
  }
}

void Loop(const Arguments& arguments) {
  Scene scene(arguments.at(0), arguments.at(1), arguments.at(2));
  scene.It().Start();
  // The first save makes the file that is held.
  for (int event = 0;; ++event) {
    if (event == 1 && arguments.at(1) == "held") scene.Hold();
    scene.It().Add(event);
    scene.It().SaveAll();
    std::printf("%d\n", event + 1);
    std::fflush(stdout);
  }
}

void After(const Arguments& arguments) {
  Scene scene(arguments.at(0), "usual", arguments.at(1));
  const int least = Atoi(arguments.at(2));
  const FileContent found = ReadDurableFile(scene.Path());
  int events = least;
  while (events < least + 2 && found.bytes != scene.It().FileOf(events)) ++events;
  Expect(!found.failure && events < least + 2,
         "not the whole content after " + std::to_string(least) + " saves");
  scene.It().Start();
  scene.It().Add(events);
  scene.It().SaveAll();
  Expect(ReadContent(scene.Path()).bytes == scene.It().FileOf(events + 1), "the next start's save");
}

struct Command {
  const char* name;
  void (*run)(const Arguments& arguments);
};

constexpr Command kCommands[] = {{"steps", PrintSteps}, {"cut", Cut},       {"check", Check},
                                 {"fail", Fail},        {"medium", Medium}, {"loop", Loop},
                                 {"after", After}};

int Run(const Arguments& arguments) {
  TakeCalls();
  for (const Command& command : kCommands) {
    if (arguments.at(0) != command.name) continue;
    command.run(Arguments(arguments.begin() + 1, arguments.end()));
    return failures == 0 ? 0 : 1;
  }
  return 2;
}

}  // namespace
}  // namespace dozewell::power_cut

int main(int argc, char** argv) { return dozewell::power_cut::Run({argv + 1, argv + argc}); }
