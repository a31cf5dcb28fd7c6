// tools/Csv.h: comma-separated text as the sheet mode of vktcalc reads and
// writes it. Fields are UTF-8 bytes as they stand; a field in double quotes
// may hold commas, doubled quotes and line ends. Records end with LF or
// CR LF; a UTF-8 byte order mark in front is dropped.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vkt::tool {

using CsvRecord = std::vector<std::string>;

// Splits `text` into records of fields. A last line without its line end
// still counts; an empty text gives no record. False, with the reason in
// `problem` and the records read so far, when a quoted field is not closed.
bool ReadCsv(std::string_view text, std::vector<CsvRecord>& records, std::string& problem);

// Appends `field`, in double quotes with its quotes doubled when it holds a
// comma, a quote, CR or LF, else as it stands.
void AppendCsvField(std::string& out, std::string_view field);

}  // namespace vkt::tool
