// A strict pull reader for the part of XML that drawings are written in.
//
// It reads elements, attributes, text, CDATA sections and the five named and the numeric character
// references; it passes over comments, processing instructions and a document type without an
// internal subset, and knows no entities of a document's own. Text is taken as UTF-8 and not
// checked: whoever writes it out again repairs it (see `escaped`).
//
// Ownership: borrows the text, which must outlive the reader.
// Threads: one caller at a time.
// Fails: the token `error`, which stays; `problem` says what is wrong and on which line. The end is
//   only reached when every element was closed in its turn. Elements nest to at most `deepest`.
//
//   XmlReader reader(text);
//   while (reader.next() == XmlReader::Token::startElement) use(reader.name());
#pragma once

#include <concepts>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tern::picture {

struct XmlAttribute {
  std::string_view name;
  std::string value;
};

class XmlReader {
 public:
  enum class Token { startElement, endElement, text, end, error };

  static constexpr std::size_t deepest = 128;
  static constexpr std::size_t mostAttributes = 256;

  explicit XmlReader(std::string_view text);
  template <std::same_as<std::string> Temporary>
  explicit XmlReader(Temporary&&) = delete;

  // An empty element gives a start and then an end.
  Token next();

  // Of the element that starts or ends here.
  std::string_view name() const { return name_; }
  // Of the element that starts here, with their references replaced.
  const std::vector<XmlAttribute>& attributes() const { return attributes_; }
  // Of a text token.
  const std::string& text() const { return content_; }
  std::string problem() const;

 private:
  Token fail(std::string_view problem);
  bool looksAt(std::string_view prefix) const { return rest().substr(0, prefix.size()) == prefix; }
  std::string_view rest() const { return text_.substr(at_); }
  bool atEnd() const { return at_ >= text_.size(); }
  // Goes behind the next `mark`; false when there is none.
  bool skipPast(std::string_view mark);
  void skipSpace();
  std::string_view takeName();
  bool skipDocumentType();
  Token readEnd();
  Token readText();
  Token readCData();
  Token readStart();
  Token readStop();
  bool readAttribute();
  bool appendReference(std::string& to);

  std::string_view text_;
  std::size_t at_ = 0;
  std::string_view problem_;
  std::vector<std::string_view> open_;
  bool rootSeen_ = false;
  bool endPending_ = false;
  std::string_view name_;
  std::vector<XmlAttribute> attributes_;
  std::string content_;
};

}  // namespace tern::picture
