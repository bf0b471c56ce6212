#include "programs/desktop/windows/compare_window.h"

#include <QClipboard>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QSplitter>
#include <QVBoxLayout>
#include <utility>

#include "programs/desktop/common/text.h"
#include "programs/desktop/models/picture_image.h"
#include "programs/desktop/widgets/detail_table.h"
#include "programs/desktop/widgets/picture_view.h"

namespace zel::desktop {

CompareWindow::CompareWindow(ComparedMessage a, ComparedMessage b, const PictureView& view, QWidget* parent)
    : QWidget(parent, Qt::Window),
      m_a(std::move(a)),
      m_b(std::move(b)),
      m_title_a(new QLabel(this)),
      m_title_b(new QLabel(this)),
      m_summary(new QLabel(this)),
      m_view_a(MakeView("compare_a", view)),
      m_marked(MakeView("compare_marked", view)),
      m_view_b(MakeView("compare_b", view)),
      m_list(new DetailTable({tr("Difference")}, tr("The messages do not differ"), this)) {
    setObjectName(QStringLiteral("compare_window"));
    setAttribute(Qt::WA_DeleteOnClose);
    m_marked->setAccessibleName(tr("Differences in the pictures"));
    m_marked->SetBackground(PictureView::Background::kColour, Qt::black);
    m_marked->SetKeyOnly(false);
    m_list->setObjectName(QStringLiteral("compare_list"));
    m_list->setAccessibleName(tr("Differences"));
    m_summary->setObjectName(QStringLiteral("compare_summary"));
    m_summary->setTextFormat(Qt::PlainText);
    auto* const below = new QWidget(this);
    auto* const rows = new QVBoxLayout(below);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->addWidget(m_summary);
    rows->addWidget(m_list);
    auto* const parts = new QSplitter(Qt::Vertical, this);
    parts->addWidget(MakePictures());
    parts->addWidget(below);
    parts->setStretchFactor(0, 3);
    parts->setStretchFactor(1, 2);
    parts->setChildrenCollapsible(false);
    auto* const column = new QVBoxLayout(this);
    column->addWidget(parts, 1);
    column->addWidget(MakeButtons());
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this, &CompareWindow::MarkSelected);
    for (const QKeySequence& keys : {QKeySequence(Qt::Key_Escape), QKeySequence(QKeySequence::Close)})
        connect(new QShortcut(keys, this), &QShortcut::activated, this, &QWidget::close);
    resize(1240, 760);
    Show();
    m_list->setFocus();
}

PictureView* CompareWindow::MakeView(const char* name, const PictureView& like) {
    auto* const view = new PictureView(this);
    view->setObjectName(QLatin1String(name));
    view->TakeSettings(like);
    constexpr int kLeastWidth = 200, kLeastHeight = 150;
    view->setMinimumSize(kLeastWidth, kLeastHeight);
    connect(view, &PictureView::zoomed, this, [this, view] { FollowView(*view); });
    connect(view, &PictureView::scrolled, this, [this, view] { FollowView(*view); });
    return view;
}

QWidget* CompareWindow::MakePictures() {
    auto* const pictures = new QWidget(this);
    auto* const grid = new QGridLayout(pictures);
    grid->setContentsMargins(0, 0, 0, 0);
    auto* const title = new QLabel(tr("Orange: only on the left; blue: only on the right; white: differs"), this);
    int at = 0;
    for (const auto& [label, view] : {std::pair(m_title_a, m_view_a), {title, m_marked}, {m_title_b, m_view_b}}) {
        label->setTextFormat(Qt::PlainText);
        // A path may be longer than the picture is wide.
        label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        grid->addWidget(label, 0, at);
        grid->addWidget(view, 1, at);
        grid->setColumnStretch(at++, 1);
    }
    return pictures;
}

QWidget* CompareWindow::MakeButtons() {
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    struct Button {
        const char* name;
        QString text;
        QKeySequence keys;
        std::function<void()> call;
    };
    for (const Button& row :
         {Button{"compare_swap", tr("&Swap"), tr("Ctrl+Shift+D"), [this] { Swap(); }},
          {"compare_copy", tr("C&opy list"), tr("Ctrl+Shift+X"), [this] { Copy(); }},
          {"compare_in", tr("Zoom &in"), tr("Ctrl++"), [this] { m_view_a->ZoomIn(); }},
          {"compare_out", tr("Zoom o&ut"), tr("Ctrl+-"), [this] { m_view_a->ZoomOut(); }},
          {"compare_fit", tr("&Fit"), tr("Ctrl+0"), [this] { m_view_a->Fit(); }},
          {"compare_actual", tr("&Actual pixels"), tr("Ctrl+1"), [this] { m_view_a->ShowActualPixels(); }}}) {
        QPushButton* const button = buttons->addButton(row.text, QDialogButtonBox::ActionRole);
        button->setObjectName(QLatin1String(row.name));
        button->setToolTip(row.keys.toString(QKeySequence::NativeText));
        connect(button, &QPushButton::clicked, this, row.call);
        connect(new QShortcut(row.keys, this), &QShortcut::activated, this, row.call);
    }
    connect(buttons, &QDialogButtonBox::rejected, this, &QWidget::close);
    return buttons;
}

void CompareWindow::Show() {
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    m_comparison = Compare(m_a.recording, m_b.recording);
    QGuiApplication::restoreOverrideCursor();
    setWindowTitle(tr("%1 and %2 – differences").arg(m_a.title, m_b.title));
    const auto show = [](PictureView& view, QLabel& label, const ComparedMessage& message) {
        label.setText(message.title);
        view.setAccessibleName(tr("Picture of %1").arg(message.title));
        const QImage image = ImageOfPng(message.recording.picture);
        view.Show(image, DetailsOf(message.recording), image.isNull() ? tr("This message has no picture.") : QString());
    };
    show(*m_view_a, *m_title_a, m_a);
    show(*m_view_b, *m_title_b, m_b);
    const bool has_marked = m_comparison.marked.width != 0;
    m_marked->Show(has_marked ? ImageOf(m_comparison.marked) : QImage(), {}, tr("No pictures to compare."));
    m_list->Clear();
    for (const DifferenceLine& line : m_comparison.lines) m_list->AddRow({line.text});
    m_list->FitColumns();
    m_summary->setText(m_comparison.lines.empty() ? tr("The messages do not differ.")
                                                  : Counted(m_comparison.lines.size(), "difference", "differences"));
}

void CompareWindow::Swap() {
    const QModelIndex selected = m_list->selectionModel()->selectedRows().value(0);
    std::swap(m_a, m_b);
    Show();
    if (selected.isValid()) m_list->selectRow(selected.row());
}

void CompareWindow::MarkSelected() {
    const QModelIndex selected = m_list->selectionModel()->selectedRows().value(0);
    const auto at = static_cast<std::size_t>(selected.row());
    const bool is_line = selected.isValid() && at < m_comparison.lines.size();
    m_view_a->Mark(is_line ? m_comparison.lines[at].a : QRect());
    m_view_b->Mark(is_line ? m_comparison.lines[at].b : QRect());
}

/// Gives the other pictures the zoom and the place of one.
void CompareWindow::FollowView(const PictureView& leader) {
    if (std::exchange(m_following, true)) return;
    for (PictureView* const view : {m_view_a, m_marked, m_view_b}) {
        if (view != nullptr && view != &leader) view->Follow(leader);
    }
    m_following = false;
}

void CompareWindow::Copy() {
    QStringList lines;
    for (const DifferenceLine& line : m_comparison.lines) lines.append(line.text);
    QGuiApplication::clipboard()->setText(lines.join(u'\n'));
}

}  // namespace zel::desktop
