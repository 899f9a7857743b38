#include "HtmlPage.h"

#include <algorithm>
#include <fstream>

namespace modtool {

namespace {

// The count columns, in table order.
struct Column {
  const char* title;
  long ClassImpact::*count;
};

const Column kColumns[] = {
    {"old", &ClassImpact::before},
    {"new", &ClassImpact::after},
    {"read", &ClassImpact::read},
    {"written", &ClassImpact::written},
    {"copied", &ClassImpact::copied},
    {"created", &ClassImpact::created},
    {"removed", &ClassImpact::removed},
    {"renamed", &ClassImpact::renamed},
    {"values changed", &ClassImpact::valuesChanged},
};

const char kStyle[] =
    "body{font-family:sans-serif;margin:2em;color:#222}"
    "table{border-collapse:collapse;margin:1em 0}"
    "th,td{border:1px solid #ccc;padding:2px 6px;vertical-align:top}"
    "th{background:#eee;cursor:pointer;user-select:none}"
    "td.count{position:relative;text-align:right;min-width:5em}"
    "td.count .bar{position:absolute;left:0;top:0;bottom:0;background:#9cd;z-index:-1}"
    "td.count{z-index:0}"
    ".loss{color:#a00;font-weight:bold}"
    ".note{font-style:italic}";

// Sorts a table by the clicked column: counts as numbers, the rest as text;
// a second click reverses the order.
const char kScript[] =
    "document.querySelectorAll('table.classes th').forEach(function(th){"
    "th.addEventListener('click',function(){"
    "var table=th.closest('table'),body=table.tBodies[0],i=th.cellIndex;"
    "var up=th.dataset.order!=='up';th.dataset.order=up?'up':'down';"
    "var rows=Array.prototype.slice.call(body.rows);"
    "rows.sort(function(a,b){var x=a.cells[i],y=b.cells[i];"
    "var v=x.dataset.value!==undefined?Number(x.dataset.value)-Number(y.dataset.value)"
    ":x.textContent.localeCompare(y.textContent);return up?v:-v;});"
    "rows.forEach(function(r){body.appendChild(r);});});});";

std::string list(const std::vector<std::string>& items, const char* cssClass) {
  std::string html;
  for (const std::string& item : items) {
    html += std::string("<div class=\"") + cssClass + "\">" + HtmlPage::escape(item) + "</div>";
  }
  return html;
}

std::vector<std::string> attributeChanges(const ClassImpact& impact) {
  std::vector<std::string> changes;
  for (const auto& entry : impact.attributesAdded)
    changes.push_back("+" + entry.first + " (" + std::to_string(entry.second) + ")");
  for (const auto& entry : impact.attributesRemoved)
    changes.push_back("-" + entry.first + " (" + std::to_string(entry.second) + ")");
  for (const auto& entry : impact.attributesRenamed) changes.push_back(entry.first + " -> " + entry.second);
  for (const std::string& to : impact.renamedTo) changes.push_back("class -> " + to);
  return changes;
}

}  // namespace

std::string HtmlPage::escape(const std::string& text) {
  std::string out;
  for (char c : text) {
    switch (c) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      case '"':
        out += "&quot;";
        break;
      default:
        out += c;
    }
  }
  return out;
}

std::string HtmlPage::classRow(const ClassImpact& impact, const std::vector<long>& largest) {
  std::string html = "<tr><td class=\"class\">" + escape(impact.name) + "</td>";
  for (size_t i = 0; i < std::size(kColumns); ++i) {
    const long count = impact.*kColumns[i].count;
    const long width = largest[i] == 0 ? 0 : count * 100 / largest[i];
    html += "<td class=\"count\" data-column=\"" + std::string(kColumns[i].title) + "\" data-value=\"" +
            std::to_string(count) + "\"><div class=\"bar\" style=\"width:" + std::to_string(width) + "%\"></div>" +
            std::to_string(count) + "</td>";
  }
  return html + "<td>" + list(attributeChanges(impact), "attribute") + "</td><td>" + list(impact.examples, "example") +
         "</td><td>" + list(impact.losses, "loss") + "</td></tr>\n";
}

std::string HtmlPage::schemaSection(const SchemaImpact& schema, size_t index) {
  std::string html = "<h2>Schema " + escape(schema.name) + ": " + escape(schema.fromVersion) + " &rarr; " +
                     escape(schema.toVersion) + " (" + escape(schema.kind) + "), " + escape(schema.result) + "</h2>\n";
  if (!schema.note.empty()) html += "<p class=\"note\">" + escape(schema.note) + "</p>\n";
  if (!schema.compared) return html;
  std::vector<long> largest;
  for (const Column& column : kColumns) {
    long most = 0;
    for (const ClassImpact& impact : schema.classes) most = std::max(most, impact.*column.count);
    largest.push_back(most);
  }
  html += "<table class=\"classes\" id=\"classes-" + std::to_string(index) + "\"><thead><tr><th>class</th>";
  for (const Column& column : kColumns) html += std::string("<th>") + column.title + "</th>";
  html += "<th>attributes</th><th>first changed values</th><th>data lost</th></tr></thead><tbody>\n";
  for (const ClassImpact& impact : schema.classes) html += classRow(impact, largest);
  return html + "</tbody></table>\n";
}

std::string HtmlPage::build(const ImpactReport& report) {
  std::string html = "<!DOCTYPE html>\n<html><head><meta charset=\"utf-8\"><title>vosk-modtool dry run</title><style>" +
                     std::string(kStyle) + "</style></head><body>\n<h1>Dry run</h1>\n<p id=\"outcome\">" +
                     escape(report.outcome) + "</p>\n" + list(report.rollbackReasons, "loss");
  for (size_t i = 0; i < report.schemas.size(); ++i) html += schemaSection(report.schemas[i], i);
  return html + "<script>" + kScript + "</script>\n</body></html>\n";
}

bool HtmlPage::write(const ImpactReport& report, const std::string& path, std::string* why) {
  std::ofstream file(path);
  file << build(report);
  file.close();
  if (!file) *why = "cannot write " + path;
  return static_cast<bool>(file);
}

}  // namespace modtool
