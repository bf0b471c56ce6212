#include "host/run/font_run.h"

#include <algorithm>

#include "host/module_call.h"
#include "host/native_path.h"
#include "host/reference_host.h"
#include "host/run/file_error.h"
#include "module/contract/registration.h"
#include "module/contract/zel_font.h"
#include "module/contract/zel_trans_export.h"
#include "platform/system/commands.h"
#include "platform/system/files.h"

namespace zel::run {

namespace {

/// A font set that releases its slot 0.
class FontSet {
  public:
    FontSet() = default;
    ~FontSet() {
        fonts.ReleaseFontData(&Slot());
        delete Slot().font_copy;
    }
    FontSet(const FontSet&) = delete;
    FontSet& operator=(const FontSet&) = delete;

    tag_font_memory& Slot() noexcept { return fonts.m_Slots[0]; }

    CZelFont fonts;
};

/// Why the module would not look for a font file under its path; empty when it would.
std::string NameError(const std::string& module_path) {
    const std::string name = host::SplitModulePath(module_path).name;
    const std::size_t dot = name.rfind('.');
    const std::string digits = dot == std::string::npos ? "" : name.substr(dot + 1);
    const auto is_digit = [](char c) { return c >= '0' && c <= '9'; };
    if (digits.empty() || !std::ranges::all_of(digits, is_digit)) {
        return "a font file is named by a dot and a number, such as .0012";
    }
    if (dot != 0) {
        return "a font file is named by a dot and a number alone, such as ." + digits + ", without \"" +
               name.substr(0, dot) + "\" in front";
    }
    if (module_path.find(name) != module_path.size() - name.size()) {
        return "the module uses the first \"" + name +
               "\" in the path as the file's name, and that is part of a directory's";
    }
    std::string number = digits.substr(std::min(digits.find_first_not_of('0'), digits.size() - 1));
    const std::string padded = std::string(number.size() < 4 ? 4 - number.size() : 0, '0') + number;
    if (digits == number || digits == padded) return {};
    return "the module looks for this number under the names ." + padded + " and ." + number + " only";
}

/// The end of the prompt for a missing font; empty without a prompt.
std::string PromptEnd(const script::HeadlessDesktop& desktop) {
    if (!desktop.FileDialogs().empty()) return ", and the file dialog was cancelled";
    for (const script::HeadlessDesktop::Box& box : desktop.Boxes()) {
        if (box.answer == IDCANCEL) return ", and the prompt to browse for it was cancelled";
        if (box.answer == IDNO) return ", and the prompt to browse for it was answered with No";
    }
    return {};
}

std::string FileError(const std::string& module_path, const std::string& prompt_end) {
    const std::string error = OpenError("font", module_path);
    if (!error.empty()) return error + prompt_end;
    return ContentError("font", system::NativePath(module_path.c_str()));
}

std::string Reason(const std::string& module_path, const script::HeadlessDesktop& desktop) {
    if (!desktop.FileDialogs().empty() && desktop.FileDialogs().back().answer == IDOK) {
        const std::string& browsed = desktop.FileDialogs().back().path;
        return "not found, and the file chosen instead, " + system::NativePath(browsed.c_str()) +
               ", can't be used: " + FileError(browsed, {});
    }
    const std::string error = module_path.size() < MAX_PATH ? NameError(module_path) : std::string();
    return error.empty() ? FileError(module_path, PromptEnd(desktop)) : error;
}

/// How a call of the module ended.
struct CallResult {
    bool filled = false;
    std::optional<std::string> exception;
};

CallResult MakeFont(const FontRunRequest& request, std::string module_path,
                    std::span<host::HostObserver* const> observers, CZelFont& fonts) {
    host::ReferenceHost host({.maps = request.maps});
    for (host::HostObserver* observer : observers) host.AddObserver(observer);
    SaveWarningPref(request.warnings ? 0 : 1);
    CallResult call;
    call.exception =
        host::CallInHost(host, [&] { call.filled = CZelTransExport().MakeTavroFont(module_path.data(), &fonts); });
    return call;
}

void ReportFont(std::span<host::HostObserver* const> observers, const CallResult& call, const CZelFont& fonts) {
    if (!call.exception) {
        for (host::HostObserver* observer : observers) observer->OnFont(call.filled, fonts);
    }
    host::ReportEnd(observers, call.exception, host::RunEndOf(host::RunKind::kFont, std::nullopt));
}

}  // namespace

FontRunOutcome RunFont(const FontRunRequest& request, std::span<host::HostObserver* const> observers,
                       const std::function<void(CZelFont&)>& use) {
    FontRunOutcome outcome;
    const std::string module_path = system::ModulePath(host::AbsolutePath(request.file));
    host::UserDesktop desktop(request.box_answer, request.browse, observers);
    FontSet set;
    CallResult call;
    try {
        call = MakeFont(request, module_path, observers, set.fonts);
    } catch (const host::HostError& error) {
        outcome.failure = error.what();
        return outcome;
    }
    ReportFont(observers, call, set.fonts);
    if (call.exception) {
        outcome.failure = request.file + ": reading stopped: " + *call.exception;
    } else if (!call.filled) {
        outcome.failure = request.file + ": " + Reason(module_path, desktop);
    } else {
        if (set.Slot().file_name != module_path) outcome.read_from = system::NativePath(set.Slot().file_name);
        desktop.ObserveBoxes({});
        if (use) use(set.fonts);
    }
    return outcome;
}

}  // namespace zel::run
