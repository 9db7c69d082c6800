#include "brenmark/page/html_page.h"

#include "brenmark/disk.h"
#include "brenmark/plot_axis.h"

namespace NBrenmark {

static const char* const pageHead =
    "<meta charset=\"utf-8\">\n"
    "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
    "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src 'unsafe-inline'\">\n"
    "<style>\n"
    "body{font:16px/1.45 Helvetica,Arial,sans-serif;color:#222;background:#fff;max-width:62rem;margin:0 auto;"
    "padding:1rem;overflow-wrap:anywhere}\n"
    "h1{font-size:1.5rem}h2{font-size:1.2rem;margin-top:2rem;border-bottom:1px solid #ccc}h3{font-size:1rem}\n"
    "table{border-collapse:collapse;width:100%;font-size:.9rem}\n"
    "th,td{text-align:left;vertical-align:top;padding:.25rem .6rem .25rem 0;border-bottom:1px solid #e4e4e4}\n"
    "th{color:#555;overflow-wrap:normal}td:first-child{min-width:6.5em}code{font-size:.9em}svg{width:100%;height:auto;"
    "max-width:36rem}\n"
    "section{margin-top:2rem}\n"
    "@media print{body{font-size:10pt;max-width:none;padding:0}h2,h3,svg,tr{break-inside:avoid;break-after:auto}}\n"
    "</style>\n";

std::string htmlText(const std::string& text) { return svgText(text); }

CHtmlPage::CHtmlPage(const std::string& title)
    : html("<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<title>" + htmlText(title) + "</title>\n" + pageHead +
           "</head>\n<body>\n")
{
    heading(1, title);
}

CHtmlPage& CHtmlPage::heading(int level, const std::string& text)
{
    const std::string tag = 'h' + std::to_string(level);
    return raw('<' + tag + '>' + htmlText(text) + "</" + tag + ">\n");
}

CHtmlPage& CHtmlPage::paragraph(const std::string& text) { return raw("<p>" + htmlText(text) + "</p>\n"); }

CHtmlPage& CHtmlPage::raw(const std::string& text)
{
    html += text;
    return *this;
}

CHtmlPage& CHtmlPage::beginTable(std::initializer_list<const char*> heads)
{
    html += "<table>\n<tr>";
    for (const char* const head : heads)
        html += "<th>" + htmlText(head) + "</th>";
    html += "</tr>\n";
    return *this;
}

CHtmlPage& CHtmlPage::row(std::initializer_list<std::string> cells)
{
    html += "<tr>";
    for (const std::string& cell : cells)
        html += "<td>" + htmlText(cell) + "</td>";
    html += "</tr>\n";
    return *this;
}

CHtmlPage& CHtmlPage::endTable() { return raw("</table>\n"); }

void CHtmlPage::write(const std::string& path)
{
    html += "</body>\n</html>\n";
    const std::string unfinished = path + ".new";
    realDisk().writeFile(unfinished, html);
    realDisk().rename(unfinished, path);
}

} // namespace NBrenmark
