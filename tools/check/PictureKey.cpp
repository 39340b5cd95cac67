#include "tools/check/PictureKey.hpp"

#include <algorithm>
#include <vector>

#include "tools/drawing/TextWidth.hpp"
#include "tools/tern/picture/MapWindow.hpp"
#include "tools/tern/picture/Palette.hpp"

namespace tern::check {

namespace {

using picture::Markup;
namespace palette = picture::palette;

constexpr double lineHeightPx = 20;
constexpr double fontPx = 13;
constexpr double signPx = 10;
constexpr double textPx = 26;

// Dark under light, so that it is seen on whatever it lies.
void drawSign(Markup& out, const std::string& path) {
  for (const auto& [colour, width] : {std::pair{palette::casing, 5.0}, {palette::ink, 2.0}}) {
    out.leaf("path", {{"d", path},
                      {"fill", "none"},
                      {"stroke", colour},
                      {"stroke-width", width},
                      {"stroke-linecap", "round"}});
  }
}

std::string_view wordsOf(Mark mark) {
  switch (mark) {
    case Mark::trap:
      return "A way in and none out";
    case Mark::loose:
      return "Leads nowhere";
    case Mark::noLength:
      return "A link of no length";
    case Mark::wrongLink:
      return "A link too long, or through a wall";
  }
  return {};
}

class Key {
 public:
  Key(const Subject& subject, const PictureMarks& marks) : subject_(subject), marks_(marks) {}

  PictureKey draw() {
    out_.open("g", {{"font-family", palette::fonts}, {"font-size", fontPx}});
    for (std::uint32_t rank = 0; rank < std::min<std::size_t>(marks_.sizes.size(), lastRank + 1);
         ++rank) {
      add(partWords(rank), [&](picture::Point at) { drawDot(out_, at, rank); });
    }
    for (const Mark mark : allMarks) {
      if (marks_.has(mark))
        add(std::string(wordsOf(mark)), [&](picture::Point at) { drawMark(out_, at, mark); });
    }
    out_.close();
    return {{out_.take(), {picture::MapWindow::width, y_ + 4}, {}}, words_};
  }

 private:
  std::string partWords(std::uint32_t rank) const {
    const std::string count = std::to_string(marks_.sizes[rank]);
    if (rank == 0) return "Joined: " + waypointsText(marks_.sizes[rank]);
    if (rank == lastRank && marks_.sizes.size() > lastRank + 1) {
      return "Further islands, of at most " + count;
    }
    std::vector<std::uint32_t> members;
    for (std::uint32_t node = 0; node < marks_.ranks.size(); ++node) {
      if (marks_.ranks[node] == rank) members.push_back(node);
    }
    return "Island of " + count + onFloor(subject_, commonMap(subject_.network, members));
  }

  template <class Draw>
  void add(const std::string& text, Draw draw) {
    y_ += lineHeightPx;
    draw({signPx, y_ - 4.5});
    out_.leaf("text", {{"x", textPx}, {"y", y_}, {"fill", palette::ink}},
              drawing::fittedText(text, fontPx, picture::MapWindow::width - textPx));
    out_.line();
    words_ += (words_.empty() ? "" : " ") + text + ".";
  }

  const Subject& subject_;
  const PictureMarks& marks_;
  Markup out_;
  std::string words_;
  double y_ = 0;
};

}  // namespace

std::string waypointsText(std::size_t count) {
  return std::to_string(count) + (count == 1 ? " waypoint" : " waypoints");
}

std::string_view colourOf(std::uint32_t rank) {
  if (rank == 0) return palette::quiet;
  return palette::islands[std::min(rank, lastRank) - 1];
}

void drawDot(Markup& out, picture::Point at, std::uint32_t rank) {
  out.leaf("circle", {{"cx", at.x},
                      {"cy", at.y},
                      {"r", 4},
                      {"fill", colourOf(rank)},
                      {"stroke", palette::casing},
                      {"stroke-width", 1}});
}

void drawMark(Markup& out, picture::Point at, Mark mark) {
  const std::string x = picture::decimal(at.x);
  const std::string y = picture::decimal(at.y);
  switch (mark) {
    case Mark::trap:
      return drawSign(out, "M" + x + " " + y + "m-5.5 0a5.5 5.5 0 1 1 11 0a5.5 5.5 0 1 1-11 0");
    case Mark::loose:
      return drawSign(out, "M" + x + " " + y + "m-4.5-4.5l9 9m0-9l-9 9");
    case Mark::noLength:
      return drawSign(out, "M" + x + " " + y + "m-5-5h10v10h-10z");
    case Mark::wrongLink:
      return drawSign(out, "M" + x + " " + y + "m-7 4l5-3m4-2l5-3");
  }
}

PictureKey keyOf(const Subject& subject, const PictureMarks& marks) {
  return Key(subject, marks).draw();
}

}  // namespace tern::check
