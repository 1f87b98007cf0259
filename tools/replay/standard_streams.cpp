#include "replay/standard_streams.h"

#include <string_view>

#include "common/standard_stream.h"
#include "common/tool_error.h"

namespace dozewell::replay {

bool WritesFileToOutput(const Command& command, const Options& options) {
  int inputs = 0;
  int outputs = 0;
  for (const auto* list : {&command.required, &command.optional}) {
    for (const CommandOption* option : *list) {
      const auto& name = options.*option->text;
      if (std::string_view(option->placeholder) != "FILE" || !name || !IsStandardStream(*name)) {
        continue;
      }
      ++(option->isOutput ? outputs : inputs);
    }
  }
  if (inputs > 1) throw ToolError("only one file can be -, standard input");
  if (outputs > 1) throw ToolError("only one file can be -, standard output");
  if (outputs > 0 && options.json) {
    throw ToolError("--json prints to standard output, so no file can be - there");
  }
  return outputs > 0;
}

}  // namespace dozewell::replay
