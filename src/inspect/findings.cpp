#include "inspect/findings.h"

#include <algorithm>
#include <utility>

namespace zel::inspect {

Finding& AddFinding(FileReport& report, Rule rule, const Place& place, RecordKind record) {
    Finding& finding = report.findings.emplace_back();
    finding.rule = rule;
    finding.record = record;
    finding.Add(place);
    return finding;
}

void AddFinding(FileReport& report, Finding finding, std::string what) {
    if (finding.count == 0) return;
    finding.what = std::move(what);
    report.findings.push_back(std::move(finding));
}

void Conclude(FileReport& report, bool refused) {
    for (const Finding& finding : report.findings) {
        if (finding.what.empty()) continue;
        (finding.Kind() == Severity::kFault ? report.defects : report.remarks).push_back(finding.what);
    }
    const bool has_fault =
        std::ranges::any_of(report.findings, [](const Finding& finding) { return finding.Kind() == Severity::kFault; });
    report.verdict = refused ? Verdict::kBroken : has_fault ? Verdict::kReadable : Verdict::kWhole;
}

}  // namespace zel::inspect
