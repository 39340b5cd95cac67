#include "tools/import/source/CsvReader.hpp"

#include <csv.h>

#include <algorithm>

namespace tern::imports {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr std::size_t chunkBytes = std::size_t{64} << 10U;
constexpr std::size_t noPlace = static_cast<std::size_t>(-1);

class CsvReader {
 public:
  CsvReader(std::span<const std::string_view> columns,
            const std::function<void(const CsvRow&)>& onRow)
      : columns_(columns), onRow_(onRow), fields_(columns.size()) {
    head_.has.resize(columns.size());
    // Only memory could be wanting, and none is taken yet.
    csv_init(&parser_, 0);
  }
  ~CsvReader() { csv_free(&parser_); }
  CsvReader(const CsvReader&) = delete;
  CsvReader& operator=(const CsvReader&) = delete;

  CsvHead read(std::string_view text) {
    if (text.starts_with(byteOrderMark)) text.remove_prefix(byteOrderMark.size());
    std::string_view rest = text;
    while (!rest.empty() && !head_.error) {
      parse(rest.substr(0, chunkBytes));
      rest.remove_prefix(std::min(rest.size(), chunkBytes));
    }
    if (!head_.error && isQuoteOpenAfter(text)) fail("a quote is not closed");
    if (!head_.error) csv_fini(&parser_, fieldEnds, rowEnds, this);
    if (!head_.error && !isHeadRead_) fail("it has no head");
    return std::move(head_);
  }

 private:
  void parse(std::string_view chunk) {
    bytesSinceField_ += chunk.size();
    if (csv_parse(&parser_, chunk.data(), chunk.size(), fieldEnds, rowEnds, this) != chunk.size()) {
      fail(csv_strerror(csv_error(&parser_)));
    } else if (bytesSinceField_ > mostCsvFieldBytes) {
      fail("a field is longer than " + std::to_string(mostCsvFieldBytes >> 20U) + " MiB");
    }
  }

  // libcsv says so by itself only where it takes no quote within a field either, which feeds have.
  bool isQuoteOpenAfter(std::string_view text) const {
    const std::size_t last = text.find_last_not_of(" \t");
    return parser_.quoted != 0 && last != std::string_view::npos && text[last] != '"';
  }

  static void fieldEnds(void* field, std::size_t size, void* reader) {
    auto* const self = static_cast<CsvReader*>(reader);
    self->bytesSinceField_ = 0;
    if (!self->head_.error) self->addField({static_cast<const char*>(field), size});
  }

  static void rowEnds(int, void* reader) {
    auto* const self = static_cast<CsvReader*>(reader);
    if (!self->head_.error) self->endRow();
  }

  void addField(std::string_view field) {
    if (!isHeadRead_) {
      addColumn(field);
    } else if (count_ < places_.size() && places_[count_] != noPlace) {
      fields_[places_[count_]] = field;
    }
    ++count_;
  }

  // Of two columns of one name the first counts.
  void addColumn(std::string_view name) {
    if (places_.size() == mostCsvColumns) {
      fail("it has more than " + std::to_string(mostCsvColumns) + " columns");
      return;
    }
    const auto column = std::ranges::find(columns_, name);
    const auto place = static_cast<std::size_t>(column - columns_.begin());
    const bool isAsked = column != columns_.end() && !head_.has[place];
    places_.push_back(isAsked ? place : noPlace);
    if (isAsked) {
      head_.has[place] = true;
    } else {
      head_.others.emplace_back(name);
    }
  }

  void endRow() {
    if (!isHeadRead_) {
      isHeadRead_ = true;
    } else if (rows_ == mostCsvRows) {
      fail("it has more than " + std::to_string(mostCsvRows) + " rows");
    } else {
      onRow_({++rows_, fields_, count_ != places_.size()});
      for (std::string& field : fields_) field.clear();
    }
    count_ = 0;
  }

  void fail(std::string why) {
    if (!head_.error) head_.error = std::move(why);
  }

  std::span<const std::string_view> columns_;
  const std::function<void(const CsvRow&)>& onRow_;
  csv_parser parser_{};
  CsvHead head_;
  // Of each column of the table its place among those that were asked for.
  std::vector<std::size_t> places_;
  std::vector<std::string> fields_;
  std::size_t count_ = 0;
  std::size_t rows_ = 0;
  std::size_t bytesSinceField_ = 0;
  bool isHeadRead_ = false;
};

}  // namespace

CsvHead readCsv(std::string_view text, std::span<const std::string_view> columns,
                const std::function<void(const CsvRow&)>& onRow) {
  return CsvReader(columns, onRow).read(text);
}

}  // namespace tern::imports
