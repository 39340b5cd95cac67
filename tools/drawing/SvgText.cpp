#include "tools/drawing/SvgText.hpp"

#include <utility>

#include "tools/drawing/XmlText.hpp"

namespace tern::drawing {

namespace {

void attribute(std::string& out, std::string_view name, int value) {
  out += ' ';
  out += name;
  out += "=\"";
  out += std::to_string(value);
  out += '"';
}

void endTag(std::string& out, std::string_view style) {
  if (!style.empty()) out += ' ';
  out += style;
  out += "/>";
}

}  // namespace

SvgText::SvgText(int width, int height)
    : out_("<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 " + std::to_string(width) +
           " " + std::to_string(height) + "\">") {}

void SvgText::rect(const PixelBox& box, std::string_view style) {
  out_ += "<rect";
  attribute(out_, "x", box.left);
  attribute(out_, "y", box.top);
  attribute(out_, "width", box.width());
  attribute(out_, "height", box.height());
  endTag(out_, style);
}

void SvgText::circle(PixelPoint centre, int radius, std::string_view style) {
  out_ += "<circle";
  attribute(out_, "cx", centre.x);
  attribute(out_, "cy", centre.y);
  attribute(out_, "r", radius);
  endTag(out_, style);
}

void SvgText::shape(PixelPoint at, std::string_view data, std::string_view style) {
  out_ += "<path d=\"M" + std::to_string(at.x) + " " + std::to_string(at.y);
  out_ += data;
  out_ += '"';
  endTag(out_, style);
}

void SvgText::text(PixelPoint at, int size, std::string_view words, std::string_view style) {
  out_ += "<text";
  attribute(out_, "x", at.x);
  attribute(out_, "y", at.y);
  attribute(out_, "font-size", size);
  if (!style.empty()) out_ += ' ';
  out_ += style;
  out_ += '>';
  out_ += escaped(words);
  out_ += "</text>";
}

void SvgText::openGroup(std::string_view style) {
  out_ += "<g ";
  out_ += style;
  out_ += '>';
}

void SvgText::closeGroup() { out_ += "</g>"; }

std::string SvgText::finished() {
  out_ += "</svg>";
  return std::move(out_);
}

}  // namespace tern::drawing
