// tools/Csv.cpp: the reader and writer of tools/Csv.h. One pass over the
// bytes; a quote that opens nowhere but at a field's start is an ordinary
// character, as most writers of such files expect.
#include "tools/Csv.h"

namespace vkt::tool {

bool ReadCsv(std::string_view text, std::vector<CsvRecord>& records, std::string& problem) {
  if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
  std::size_t at = 0;
  const std::size_t size = text.size();
  while (at < size) {
    CsvRecord record;
    const std::size_t recordStart = at;
    for (;;) {  // one field a turn; the record ends at a line end or the end of the text
      std::string field;
      if (at < size && text[at] == '"') {
        ++at;
        for (;;) {
          const std::size_t quote = text.find('"', at);
          if (quote == std::string_view::npos) {
            problem = "a quoted field that starts in record " + std::to_string(records.size() + 1) +
                      " is not closed";
            return false;
          }
          field.append(text.substr(at, quote - at));
          at = quote + 1;
          if (at < size && text[at] == '"') {
            field.push_back('"');
            ++at;
          } else {
            break;
          }
        }
      }
      // Unquoted text, or what follows a closing quote, up to the separator.
      const std::size_t end = text.find_first_of(",\r\n", at);
      const std::size_t stop = end == std::string_view::npos ? size : end;
      field.append(text.substr(at, stop - at));
      record.push_back(std::move(field));
      at = stop;
      if (at < size && text[at] == ',') {
        ++at;
        continue;
      }
      break;
    }
    if (at < size && text[at] == '\r') ++at;
    if (at < size && text[at] == '\n') ++at;
    if (at == recordStart) ++at;  // a lone CR cannot stall the loop
    records.push_back(std::move(record));
  }
  return true;
}

void AppendCsvField(std::string& out, std::string_view field) {
  if (field.find_first_of(",\"\r\n") == std::string_view::npos) {
    out.append(field);
    return;
  }
  out.push_back('"');
  for (char c : field) {
    if (c == '"') out.push_back('"');
    out.push_back(c);
  }
  out.push_back('"');
}

}  // namespace vkt::tool
