#ifndef DOZEWELL_COMMON_HISTORY_IO_H_
#define DOZEWELL_COMMON_HISTORY_IO_H_

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "common/machine_identity.h"
#include "prediction/history_file.h"

namespace dozewell {

// True for a name that ends in ".csv", whatever its case. Such histories are CSV, all others have
// the bytes of "zs7state.dat". A history from standard input is CSV when it is text.
bool IsCsvName(const std::string& name);

// A history that was read from a file.
struct History {
  std::string name;
  std::vector<unsigned char> bytes;  // as "zs7state.dat" holds them
  std::vector<int> lines;            // the line of each record; empty unless it was CSV

  // The place of a record, counted from 0: "NAME: line 3" or "NAME: record 3 at offset 32".
  std::string Place(size_t record) const;
};

// Records as a file of this name would hold them.
History ToHistory(const std::string& name, std::span<const HistoryRecord> records);

// These throw ToolError for files that cannot be read or written, for bad lines, and for files of
// another kind. Of the service's own files they read the content that counts. A damaged history is
// read as far as the service would read it, and becomes a warning.
History LoadHistory(const std::string& name, std::vector<std::string>& warnings);
std::optional<History> LoadHistoryIfExists(const std::string& name,
                                           std::vector<std::string>& warnings);
History LoadCsvHistory(const std::string& name, std::vector<std::string>& warnings);
History LoadDatHistory(const std::string& name, std::vector<std::string>& warnings);
// The same for a file that was read already.
History DatHistory(const std::string& name, std::vector<unsigned char> content,
                   std::vector<std::string>& warnings);

// Only CSV says which machine's history it is, with the last record's time.
void SaveHistory(const std::string& name, std::span<const HistoryRecord> records,
                 const MachineIdentity& identity);
void SaveCsvHistory(const std::string& name, std::span<const HistoryRecord> records,
                    MachineIdentity identity);
void SaveDatHistory(const std::string& name, std::span<const HistoryRecord> records);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_HISTORY_IO_H_
