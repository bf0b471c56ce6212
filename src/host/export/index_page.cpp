#include "host/export/index_page.h"

#include <string_view>

#include "host/export/html_text.h"

namespace zel::exporter {

namespace {

constexpr std::string_view kIndexStyle = R"(
body { margin: 0 auto; padding: 1.5rem; max-width: 50rem; font: 1rem/1.5 system-ui, sans-serif; color: #1c2430;
       background: #f6f7f9; }
h1 { font-size: 1.25rem; font-weight: 600; }
ul { margin: 0; padding: 0; list-style: none; }
a { display: flex; gap: 1rem; padding: .35rem .75rem; border-radius: .25rem; color: inherit; text-decoration: none; }
a:hover, a:focus { background: #e2e8f0; }
b { flex: none; min-width: 4rem; color: #5b6675; font-variant-numeric: tabular-nums; }
span { overflow-wrap: anywhere; }
)";

}  // namespace

std::string IndexPage(const std::vector<IndexEntry>& messages) {
    std::string html = HtmlHead("Messages", kIndexStyle) + "<h1>Messages</h1>\n<ul>\n";
    for (const auto& [stem, title] : messages) {
        html.append("<li><a href=\"").append(stem).append(".html\"><b>").append(stem).append("</b><span>");
        html.append(HtmlText(title)).append("</span></a></li>\n");
    }
    return html + "</ul>\n</body>\n</html>\n";
}

}  // namespace zel::exporter
