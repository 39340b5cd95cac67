#include <string_view>

#include "tools/drawing/TextWidth.hpp"
#include "tools/tern/picture/Markup.hpp"
#include "tools/tern/picture/Palette.hpp"
#include "tools/tern/picture/PicturePlan.hpp"
#include "tools/tern/picture/RoutePicture.hpp"
#include "tools/tern/picture/Symbols.hpp"

namespace tern::picture {

namespace {

constexpr double pageWidth = 390;
constexpr double columnWidth = 358;
constexpr double margin = (pageWidth - columnWidth) / 2;

struct Letters {
  double size = 15;
  int weight = 400;
  std::string_view colour = palette::ink;
};

constexpr Letters small{13, 400, palette::quiet};
constexpr Letters normal{15, 400, palette::ink};
constexpr Letters strong{16, 600, palette::ink};
constexpr Letters heading{19, 600, palette::ink};

// Sets one thing below the other and knows how far down it has come.
class Column {
 public:
  explicit Column(const PicturePlan& plan) : plan_(plan) {}

  std::string draw() {
    drawHeader();
    for (const PlannedRoute& route : plan_.routes) drawRoute(route);
    return wholeFile(body_.take());
  }

 private:
  void write(const Letters& letters, double x, double baseline, std::string_view text,
             bool toTheLeft = false) {
    body_.leaf("text",
               {{"x", x},
                {"y", baseline},
                {"font-size", letters.size},
                {"font-weight", letters.weight},
                {"fill", letters.colour},
                {"text-anchor", toTheLeft ? "end" : "start"}},
               text);
    body_.line();
  }

  void writeLines(const Letters& letters, double x, std::string_view text, std::size_t most) {
    for (const std::string& line :
         drawing::wrappedText(text, letters.size, pageWidth - margin - x, most)) {
      y_ += letters.size * 1.3;
      write(letters, x, y_, line);
    }
  }

  void drawHeader() {
    y_ = 16;
    if (!plan_.venueName.empty()) writeLines(small, margin, plan_.venueName, 2);
    y_ += 6;
    if (plan_.start.empty() && plan_.goal.empty()) writeLines(heading, margin, plan_.title(), 2);
    drawEnds(plan_.start, plan_.goal);
    if (!plan_.summary.empty()) {
      y_ += 4;
      writeLines(normal, margin, plan_.summary, 2);
    }
    if (plan_.legend) {
      y_ += 10;
      place(*plan_.legend);
    }
    y_ += 12;
  }

  void drawEnds(std::string_view start, std::string_view goal) {
    constexpr double x = margin + 30;
    const double top = y_;
    if (!start.empty()) {
      writeLines(heading, x, start, 2);
      drawStart(body_, {margin + 11, top + heading.size * 1.3 - 6});
    }
    if (goal.empty()) return;
    y_ += 6;
    const double goalTop = y_;
    writeLines(heading, x, goal, 2);
    drawGoal(body_, {margin + 11, goalTop + heading.size * 1.3 + 6});
    y_ += 6;
  }

  void drawRoute(const PlannedRoute& route) {
    if (!route.title.empty()) {
      y_ += 10;
      writeLines(heading, margin, route.title, 2);
      writeLines(small, margin, route.summary, 2);
      y_ += 10;
    }
    for (const PlannedPanel& panel : route.panels) drawPanel(panel);
    y_ += 10;
  }

  void drawPanel(const PlannedPanel& panel) {
    y_ += 20;
    const double lengthWidth = drawing::textWidth(panel.length, small.size);
    write(strong, margin, y_,
          drawing::fittedText(panel.name.floor, strong.size, columnWidth - lengthWidth - 12));
    write(small, pageWidth - margin, y_, panel.length, true);
    if (!panel.name.building.empty()) writeLines(small, margin, panel.name.building, 1);
    y_ += 9;
    place(panel.drawing);
    y_ += 2;
    if (!panel.drawing.note.empty()) writeLines(small, margin, panel.drawing.note, 3);
    if (panel.departure) drawDeparture(*panel.departure);
    y_ += 12;
  }

  void place(const PanelDrawing& drawing) {
    body_.open("g", {{"transform", "translate(" + decimal(margin) + " " + decimal(y_) + ")"}})
        .raw(drawing.markup)
        .close()
        .line();
    y_ += drawing.size.height;
  }

  void drawDeparture(const FloorChange& change) {
    y_ += 8;
    drawChange(body_, {margin + 13, y_ + 14}, change.heading);
    writeLines(normal, margin + 34, change.text(), 3);
    y_ += 4;
  }

  std::string wholeFile(std::string_view body) const {
    const std::string height = decimal(y_);
    Markup file;
    file.raw("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n");
    file.open("svg", {{"xmlns", "http://www.w3.org/2000/svg"},
                      {"width", pageWidth},
                      {"height", height},
                      {"viewBox", "0 0 " + decimal(pageWidth) + " " + height},
                      {"role", "img"},
                      {"aria-labelledby", "title description"},
                      {"lang", "en"},
                      {"font-family", palette::fonts}});
    file.line().leaf("title", {{"id", "title"}}, plan_.title());
    file.line().leaf("desc", {{"id", "description"}}, plan_.words());
    file.line().leaf("rect", {{"width", "100%"}, {"height", "100%"}, {"fill", palette::page}});
    file.line().open("defs").line().raw(plan_.drawings).close();
    file.line().raw(body).close().line();
    return file.take();
  }

  const PicturePlan& plan_;
  Markup body_;
  double y_ = 0;
};

}  // namespace

std::string svgOf(const PicturePlan& plan) { return Column(plan).draw(); }

std::string routePictureSvg(const RoutePicture& picture) { return svgOf(planOf(picture)); }

}  // namespace tern::picture
