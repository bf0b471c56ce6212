#include "platform/framework/controls.h"

#include <algorithm>
#include <string_view>

#include "base/fold_case.h"

namespace zel::framework {

namespace {

/// Range of selected characters.
struct Selection {
    std::size_t start = 0;
    std::size_t end = 0;
};

/// Edit. It sends EN_UPDATE and EN_CHANGE each time its text is set, also to the same text.
class EditWindow : public HWND__ {
  public:
    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam) override {
        switch (message) {
            case EM_SETSEL:
                Select(wParam, lParam);
                return TRUE;
            case EM_GETSEL:
                if (wParam != 0) *FromParam<DWORD>(wParam) = static_cast<DWORD>(m_selection.start);
                if (lParam != 0) *FromParam<DWORD>(lParam) = static_cast<DWORD>(m_selection.end);
                return static_cast<LRESULT>(
                    MAKEWPARAM(static_cast<UINT>(m_selection.start), static_cast<UINT>(m_selection.end)));
            case EM_LIMITTEXT:
                limit = wParam != 0 ? wParam : INT_MAX;
                return 0;
            case EM_GETLIMITTEXT:
                return static_cast<LRESULT>(limit);
            default:
                return HWND__::Handle(message, wParam, lParam);
        }
    }

  protected:
    void SetText(const char* newText) override {
        m_selection = {};
        HWND__::SetText(newText);
        const HWND self = this;
        Notify(EN_UPDATE);
        if (IsWindow(self)) Notify(EN_CHANGE);
    }

  private:
    /// Selects from `start` to `end`. An end of -1 is the end of the text; a start of -1 clears the selection.
    void Select(WPARAM start, LPARAM end) {
        const auto first = static_cast<LPARAM>(start);
        const std::size_t last = end < 0 ? text.size() : std::min(static_cast<std::size_t>(end), text.size());
        m_selection.start = first < 0 ? last : std::min(static_cast<std::size_t>(first), last);
        m_selection.end = last;
        Changed(WindowChange::selection);
    }

    Selection m_selection;
};

/// The entries of a combo box or list box, and the index of the selected one.
class ListWindow : public HWND__ {
  protected:
    LRESULT Add(LPARAM entry) { return Insert(SortedPlace(entry), entry); }

    LRESULT Insert(std::size_t index, LPARAM entry) {
        if (index > m_list.size() || entry == 0) return CB_ERR;
        m_list.insert(m_list.begin() + static_cast<std::ptrdiff_t>(index), FromParam<const char>(entry));
        if (m_current != CB_ERR && static_cast<std::size_t>(m_current) >= index) ++m_current;
        Changed(WindowChange::list);
        return static_cast<LRESULT>(index);
    }

    LRESULT CopyEntry(std::size_t index, LPARAM out) const {
        if (index >= m_list.size() || out == 0) return CB_ERR;
        const std::string& entry = m_list[index];
        std::copy_n(entry.c_str(), entry.size() + 1, FromParam<char>(out));
        return static_cast<LRESULT>(entry.size());
    }

    LRESULT EntryLength(std::size_t index) const {
        return index < m_list.size() ? static_cast<LRESULT>(m_list[index].size()) : CB_ERR;
    }

    LRESULT Count() const { return static_cast<LRESULT>(m_list.size()); }

    std::vector<std::string> m_list;
    LRESULT m_current = CB_ERR;

  private:
    std::size_t SortedPlace(LPARAM entry) const {
        if ((flags & ctl::sorted) == 0 || entry == 0) return m_list.size();
        const auto place = std::upper_bound(m_list.begin(), m_list.end(),
                                            std::string_view(FromParam<const char>(entry)), base::LessFolded);
        return static_cast<std::size_t>(place - m_list.begin());
    }
};
static_assert(LB_ERR == CB_ERR);

/// Drop-down combo box: a list and an edit field, whose text is the window's text.
class ComboWindow : public ListWindow {
  public:
    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam) override {
        switch (message) {
            case CB_ADDSTRING:
                return Add(lParam);
            case CB_INSERTSTRING:
                return Insert(static_cast<LRESULT>(wParam) == -1 ? m_list.size() : wParam, lParam);
            case CB_DELETESTRING:
                return Delete(wParam);
            case CB_RESETCONTENT:
                m_list.clear();
                Changed(WindowChange::list);
                Choose(0);
                return 0;
            case CB_GETCOUNT:
                return Count();
            case CB_GETCURSEL:
                return m_current;
            case CB_SETCURSEL:
                return Choose(wParam);
            case CB_GETLBTEXT:
                return CopyEntry(wParam, lParam);
            case CB_GETLBTEXTLEN:
                return EntryLength(wParam);
            case CB_LIMITTEXT:
                limit = wParam != 0 ? wParam : INT_MAX;
                return TRUE;
            case CB_FINDSTRINGEXACT:
                return Find(static_cast<LRESULT>(wParam), lParam);
            default:
                return HWND__::Handle(message, wParam, lParam);
        }
    }

  protected:
    void SetText(const char* newText) override {
        m_current = CB_ERR;
        HWND__::SetText(newText);
    }

  private:
    LRESULT Delete(std::size_t index) {
        if (index >= m_list.size()) return CB_ERR;
        m_list.erase(m_list.begin() + static_cast<std::ptrdiff_t>(index));
        const auto deleted = static_cast<LRESULT>(index);
        if (m_current == deleted) {
            m_current = CB_ERR;
        } else if (m_current > deleted) {
            --m_current;
        }
        Changed(WindowChange::list);
        return Count();
    }

    /// An index outside the list clears the selection and the edit field.
    LRESULT Choose(std::size_t index) {
        const bool inside = index < m_list.size();
        m_current = inside ? static_cast<LRESULT>(index) : CB_ERR;
        text = inside ? m_list[index] : std::string();
        Changed(WindowChange::selection);
        Changed(WindowChange::text);
        return m_current;
    }

    /// Searches from the entry after `before` to the end, then from the first entry.
    LRESULT Find(LRESULT before, LPARAM wanted) const {
        const LRESULT count = Count();
        if (wanted == 0) return CB_ERR;
        if (before < 0 || before >= count) before = -1;
        for (LRESULT step = 1; step <= count; ++step) {
            const LRESULT index = (before + step) % count;
            if (base::EqualsFolded(m_list[static_cast<std::size_t>(index)], FromParam<const char>(wanted)))
                return index;
        }
        return CB_ERR;
    }
};

/// List box with at most one selected entry. Selecting sends no notification.
class ListBoxWindow : public ListWindow {
  public:
    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam) override {
        switch (message) {
            case LB_ADDSTRING:
                return Add(lParam);
            case LB_RESETCONTENT:
                m_list.clear();
                m_current = LB_ERR;
                Changed(WindowChange::list);
                return 0;
            case LB_GETCOUNT:
                return Count();
            case LB_GETCURSEL:
                return m_current;
            case LB_SETCURSEL:
                m_current = wParam < m_list.size() ? static_cast<LRESULT>(wParam) : LB_ERR;
                Changed(WindowChange::selection);
                return m_current;
            case LB_GETTEXT:
                return CopyEntry(wParam, lParam);
            case LB_GETTEXTLEN:
                return EntryLength(wParam);
            default:
                return HWND__::Handle(message, wParam, lParam);
        }
    }
};

/// Push button, check box or radio button.
class ButtonWindow : public HWND__ {
  public:
    explicit ButtonWindow(ControlKind kind) : m_kind(kind) {}

    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam) override {
        switch (message) {
            case BM_GETCHECK:
                return static_cast<LRESULT>(m_check);
            case BM_SETCHECK:
                SetCheck(wParam);
                return 0;
            case BM_CLICK:
                Click();
                return 0;
            default:
                return HWND__::Handle(message, wParam, lParam);
        }
    }

  private:
    bool IsPush() const { return m_kind != ControlKind::check_box && m_kind != ControlKind::radio_button; }

    void SetCheck(WPARAM state) {
        if (IsPush() || m_check == state) return;
        m_check = state;
        Changed(WindowChange::check);
    }

    void Click() {
        if (!enabled) return;
        SetFocus();
        if ((flags & ctl::automatic) != 0 && m_kind == ControlKind::check_box) {
            SetCheck(m_check == BST_UNCHECKED ? BST_CHECKED : BST_UNCHECKED);
        } else if ((flags & ctl::automatic) != 0 && m_kind == ControlKind::radio_button) {
            for (ButtonWindow* const other : Group()) other->SetCheck(other == this ? BST_CHECKED : BST_UNCHECKED);
        }
        Notify(BN_CLICKED);
    }

    /// The automatic radio buttons of the group that contains this one.
    std::vector<ButtonWindow*> Group() const {
        std::vector<ButtonWindow*> group;
        bool isOwn = false;
        for (const auto& sibling : parent->children) {
            if ((sibling->flags & ctl::group) != 0) {
                if (isOwn) break;
                group.clear();
            }
            isOwn = isOwn || sibling.get() == this;
            auto* const button = dynamic_cast<ButtonWindow*>(sibling.get());
            if (button != nullptr && button->m_kind == ControlKind::radio_button &&
                (button->flags & ctl::automatic) != 0) {
                group.push_back(button);
            }
        }
        return group;
    }

    ControlKind m_kind;
    WPARAM m_check = BST_UNCHECKED;
};

std::unique_ptr<HWND__> MakeKind(ControlKind kind) {
    switch (kind) {
        case ControlKind::edit:
            return std::make_unique<EditWindow>();
        case ControlKind::combo_box:
            return std::make_unique<ComboWindow>();
        case ControlKind::list_box:
            return std::make_unique<ListBoxWindow>();
        case ControlKind::push_button:
        case ControlKind::default_button:
        case ControlKind::multi_line_button:
        case ControlKind::check_box:
        case ControlKind::radio_button:
            return std::make_unique<ButtonWindow>(kind);
        case ControlKind::group_box:
        case ControlKind::static_text:
            break;
    }
    return std::make_unique<HWND__>();
}

}  // namespace

std::unique_ptr<HWND__> MakeControl(const ControlTemplate& control) {
    auto window = MakeKind(control.kind);
    window->id = control.id == 0xFFFF ? IDC_STATIC : control.id;
    window->flags = control.flags;
    window->text = control.text != nullptr ? control.text : "";
    window->shown = (control.flags & ctl::hidden) == 0;
    window->enabled = (control.flags & ctl::disabled) == 0;
    return window;
}

}  // namespace zel::framework
