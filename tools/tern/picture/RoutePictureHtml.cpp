#include <string>
#include <string_view>
#include <utility>

#include "tools/tern/picture/Markup.hpp"
#include "tools/tern/picture/Palette.hpp"
#include "tools/tern/picture/PicturePlan.hpp"
#include "tools/tern/picture/RoutePicture.hpp"
#include "tools/tern/picture/Symbols.hpp"

namespace tern::picture {

namespace {

constexpr std::string_view style = R"(:root { color-scheme: light dark; }
* { box-sizing: border-box; }
body { margin: 0; background: var(--page); color: var(--ink); -webkit-text-size-adjust: 100%;
  font: 16px/1.4 system-ui, -apple-system, 'Segoe UI', Roboto, 'Helvetica Neue', Arial, sans-serif; }
main { max-width: 480px; margin: 0 auto; padding: 20px 16px 32px; overflow-wrap: anywhere; }
header { margin-bottom: 20px; }
h1 { margin: 6px 0; font-size: 20px; line-height: 1.3; }
h1 > span { display: flex; gap: 10px; align-items: center; min-height: 34px; }
h1 > span + span { margin-top: 4px; }
.unseen { position: absolute; clip-path: inset(50%); }
h2 { margin: 32px 0 0; font-size: 20px; line-height: 1.3; }
h3 { margin: 0; font-size: 17px; line-height: 1.3; }
p { margin: 0; }
.quiet { color: var(--quiet); font-size: 14px; }
ol { list-style: none; margin: 0; padding: 0; }
li { margin-top: 20px; }
.floor { display: flex; justify-content: space-between; align-items: baseline; gap: 12px; }
.floor .quiet { flex: none; }
.map { display: block; width: 100%; height: auto; margin: 8px 0 6px; }
.change { display: flex; gap: 10px; align-items: center; margin-top: 10px; }
.sign { flex: none; width: 26px; height: 34px; }
@media print {
  :root { --page: #fff; }
  main { padding: 0; }
  header, h2, h2 + .quiet { break-inside: avoid; break-after: avoid; }
  li { break-inside: avoid; }
}
)";

// The page has its colours by name; those that the maps have as attributes give way to rules.
std::string colourRules(const std::string& darkRules) {
  std::string light = ":root {";
  std::string dark = light;
  for (const auto& [name, colour] : {std::pair{" --page: ", palette::page},
                                     {" --ink: ", palette::ink},
                                     {" --quiet: ", palette::quiet}}) {
    light.append(name).append(colour) += ';';
    dark.append(name).append(palette::darkTwin(colour)) += ';';
  }
  std::string rules =
      light + " }\n@media screen and (prefers-color-scheme: dark) {\n" + dark + " }\n";
  for (const auto& [colour, twin] : palette::twins) {
    for (const std::string property : {"fill", "stroke"}) {
      rules += "[" + property + "=\"" + std::string(colour) + "\"] { " + property + ": " +
               std::string(twin) + "; }\n";
    }
  }
  return rules + darkRules + "}\n";
}

std::string viewBoxOf(Size size) {
  return "0 0 " + decimal(size.width) + " " + decimal(size.height);
}

class Page {
 public:
  explicit Page(const PicturePlan& plan) : plan_(plan) {}

  std::string write() {
    page_.raw("<!DOCTYPE html>\n");
    page_.open("html", {{"lang", "en"}}).line();
    writeHead();
    page_.open("body").line();
    writeDrawings();
    page_.open("main").line();
    writeHeader();
    for (std::size_t i = 0; i < plan_.routes.size(); ++i) writeRoute(plan_.routes[i], i + 1);
    page_.close().close().close().line();
    return page_.take();
  }

 private:
  void writeHead() {
    page_.open("head").line();
    page_.leaf("meta", {{"charset", "utf-8"}}).line();
    page_.leaf("meta",
               {{"http-equiv", "Content-Security-Policy"},
                {"content", "default-src 'none'; style-src 'unsafe-inline'; img-src data:"}});
    page_.line();
    page_.leaf("meta", {{"name", "viewport"}, {"content", "width=device-width, initial-scale=1"}});
    page_.line().leaf("title", {}, plan_.title()).line();
    page_.open("style")
        .line()
        .raw(colourRules(plan_.darkRules))
        .raw(style)
        .close()
        .line()
        .close()
        .line();
  }

  template <class Draw>
  void writeSign(std::string_view box, Draw draw) {
    page_.open("svg", {{"class", "sign"}, {"viewBox", box}, {"aria-hidden", "true"}});
    draw(page_);
    page_.close();
  }

  template <class Draw>
  void writeEnd(std::string_view word, std::string_view name, std::string_view box, Draw draw) {
    if (name.empty()) return;
    page_.open("span");
    writeSign(box, draw);
    page_.leaf("span", {{"class", "unseen"}}, word).leaf("span", {}, name).close();
  }

  void writeHeader() {
    page_.open("header");
    if (!plan_.venueName.empty()) page_.leaf("p", {{"class", "quiet"}}, plan_.venueName);
    page_.open("h1");
    if (plan_.start.empty() && plan_.goal.empty()) page_.text(plan_.title());
    writeEnd("From ", plan_.start, "-13 -17 26 34", [](Markup& out) { drawStart(out, {}); });
    writeEnd(" to ", plan_.goal, "-13 -31 26 36", [](Markup& out) { drawGoal(out, {}); });
    page_.close();
    page_.leaf("p", {}, plan_.summary).line();
    if (plan_.legend) writeLegend(*plan_.legend);
    page_.close().line();
  }

  void writeLegend(const PanelDrawing& legend) {
    page_.open("svg", {{"class", "map"},
                       {"viewBox", viewBoxOf(legend.size)},
                       {"role", "img"},
                       {"aria-label", plan_.legendWords}});
    page_.raw(legend.markup).close().line();
  }

  void writeDrawings() {
    page_.open("svg", {{"class", "unseen"}, {"width", 0}, {"height", 0}, {"aria-hidden", "true"}});
    page_.open("defs").line().raw(plan_.drawings).close().close().line();
  }

  void writeRoute(const PlannedRoute& route, std::size_t number) {
    page_.open("section");
    if (!route.title.empty()) {
      page_.leaf("h2", {}, route.title).leaf("p", {{"class", "quiet"}}, route.summary).line();
    }
    page_.open("ol");
    for (std::size_t i = 0; i < route.panels.size(); ++i) {
      writePanel(route.panels[i], "r" + std::to_string(number) + "f" + std::to_string(i + 1));
    }
    page_.close().close().line();
  }

  void writePanel(const PlannedPanel& panel, const std::string& id) {
    page_.open("li").open("div", {{"class", "floor"}}).leaf("h3", {}, panel.name.floor);
    page_.leaf("p", {{"class", "quiet"}}, panel.length).close();
    if (!panel.name.building.empty()) page_.leaf("p", {{"class", "quiet"}}, panel.name.building);
    writeMap(panel, id);
    if (!panel.drawing.note.empty()) page_.leaf("p", {{"class", "quiet"}}, panel.drawing.note);
    if (panel.departure) {
      page_.open("div", {{"class", "change"}});
      writeSign("-13 -17 26 34",
                [&](Markup& out) { drawChange(out, {}, panel.departure->heading); });
      page_.leaf("p", {}, panel.departure->text()).close();
    }
    page_.close().line();
  }

  void writeMap(const PlannedPanel& panel, const std::string& id) {
    page_.line().open("svg", {{"class", "map"},
                              {"viewBox", viewBoxOf(panel.drawing.size)},
                              {"role", "img"},
                              {"aria-labelledby", id + "-title " + id + "-words"}});
    page_.leaf("title", {{"id", id + "-title"}}, panel.name.text());
    page_.leaf("desc", {{"id", id + "-words"}}, panel.words);
    page_.raw(panel.drawing.markup).close().line();
  }

  const PicturePlan& plan_;
  Markup page_;
};

}  // namespace

std::string htmlOf(const PicturePlan& plan) { return Page(plan).write(); }

std::string routePictureHtml(const RoutePicture& picture) { return htmlOf(planOf(picture)); }

}  // namespace tern::picture
