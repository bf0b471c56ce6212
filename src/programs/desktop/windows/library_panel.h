#pragma once

#include <QList>
#include <QStringList>
#include <QWidget>
#include <optional>
#include <string>
#include <vector>

#include "host/library/library.h"

class QAction;
class QLabel;
class QLineEdit;
class QStackedWidget;
class QTimer;

namespace zel::desktop {

class LibraryModel;
class ThumbnailList;

/// The library as thumbnails, with a search field.
class LibraryPanel : public QWidget {
    Q_OBJECT

  public:
    explicit LibraryPanel(std::string library, QWidget* parent = nullptr);

    /// Shows another library from the next Reload on. Removes the search.
    void SetLibrary(std::string library);
    /// Reads the library again. The current recording remains current.
    void Reload();
    /// Reloads after a short delay; frequent calls are combined.
    void ReloadSoon();
    /// As ReloadSoon; then makes this recording the current one, if it is shown.
    void SelectSoon(const library::RecordingKey& key);

    /// The position in the list, to continue there later.
    struct Place {
        std::optional<library::RecordingKey> current;
        /// At the top of the visible part.
        std::optional<library::RecordingKey> first;
    };
    Place PlaceInList() const;
    /// Takes effect at the next reload and, for the visible part, when the panel is on the screen.
    void RestorePlace(const Place& place);

    /// Makes the message `step` places further in the list the current one, as far as there is one.
    void Step(int step);

    std::optional<library::RecordingKey> Current() const;
    std::vector<library::RecordingKey> Selected() const;
    /// In the order of the list.
    QStringList SelectedTexts() const;
    /// Path of the current recording's message; empty for none.
    QString CurrentSource() const;
    /// All recordings that the search has found.
    std::vector<library::RecordingKey> Shown() const;
    int Count() const;
    bool IsSearching() const;
    /// The library has no recordings; false if a search finds none or the library cannot be read.
    bool IsEmpty() const;
    /// For the context menu of the thumbnails.
    void AddContextActions(const QList<QAction*>& actions);
    void FocusSearch();
    void FocusList();

  Q_SIGNALS:
    /// Another recording is current, or it was recorded again, or there is none any more.
    void currentChanged();
    void selectionChanged();
    void reloaded();
    /// The user starts to drag the selected thumbnails.
    void dragged();
    void removeRequested();
    /// The library cannot be read.
    void failed(const QString& reason);

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    void showEvent(QShowEvent* event) override;

  private:
    void ShowMessage();
    void RestoreCurrent(int previous_row, const std::optional<library::RecordingKey>& previous);
    void ReportCurrent();
    void ChooseCurrent();
    void ScrollToFirst();

    LibraryModel* m_model;
    QLineEdit* m_search;
    ThumbnailList* m_list;
    QLabel* m_message;
    QStackedWidget* m_pages;
    QTimer* m_search_timer;
    QTimer* m_reload_timer;
    bool m_readable = true;
    /// The search of the last reload.
    QString m_searched;
    /// The message that the user selected last. It becomes current again when a search that does not find it is
    /// cleared.
    std::optional<library::RecordingKey> m_chosen;
    bool m_restoring = false;
    /// Is scrolled to when the panel is shown.
    std::optional<library::RecordingKey> m_first;
    /// Becomes current at the next reload.
    std::optional<library::RecordingKey> m_wanted;
    /// Current at the last currentChanged.
    std::optional<library::LibraryEntry> m_reported;
};

}  // namespace zel::desktop
