#pragma once

#include <QList>
#include <QStringList>
#include <QWidget>
#include <optional>
#include <string>
#include <vector>

#include "host/library/library.h"
#include "programs/desktop/models/library_filter.h"

class QAction;
class QComboBox;
class QLabel;
class QLineEdit;
class QMenu;
class QPushButton;
class QStackedWidget;
class QTimer;

namespace zel::desktop {

class LibraryModel;
class LibraryWatch;
class ThumbnailList;

/// The library as thumbnails, with a search field and a choice of the disk. It follows what other programs write.
class LibraryPanel : public QWidget {
    Q_OBJECT

  public:
    explicit LibraryPanel(std::string library, QWidget* parent = nullptr);

    /// Shows another library from the next Reload on. Removes the search and the choice of a disk.
    void SetLibrary(std::string library);
    /// Reads the library again. The current recording remains current.
    void Reload();
    /// Reloads after a short delay; frequent calls are combined.
    void ReloadSoon();
    /// As ReloadSoon; then makes this recording the current one, if it is shown.
    void SelectSoon(const library::RecordingKey& key);

    /// Makes a recording the current one, without a filter if that does not list it. Does nothing for one that the
    /// library does not contain.
    void Select(const library::RecordingKey& key);

    /// The position in the list, to continue there later.
    struct Place {
        std::optional<library::RecordingKey> current;
        /// At the top of the visible part.
        std::optional<library::RecordingKey> first;
    };
    Place PlaceInList() const;
    /// Takes effect at the next reload and, for the visible part, when the panel is on the screen.
    void RestorePlace(const Place& place);

    void SetOrder(LibraryOrder order);
    void SetOnlyWithWarnings(bool on);
    void SetGrouped(bool on);
    /// The menu of the button beside the search field. Not owned.
    void SetMenu(QMenu* menu);

    /// Makes the message `step` places further in the list the current one, as far as there is one.
    void Step(int step);

    std::optional<library::RecordingKey> Current() const;
    std::vector<library::RecordingKey> Selected() const;
    /// In the order of the list.
    QStringList SelectedTexts() const;
    /// Path of the current recording's message; empty for none.
    QString CurrentSource() const;
    /// All recordings in the list.
    std::vector<library::RecordingKey> Shown() const;
    int Count() const;
    /// The list does not have every message of the library.
    bool IsFiltered() const;
    /// The library has no recordings; false if a filter finds none or the library cannot be read.
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
    /// The library, or a recording in it, cannot be read.
    void failed(const QString& reason);

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    void showEvent(QShowEvent* event) override;

  private:
    void SetUpFields();
    void LayOut();
    void Connect();
    LibraryFilter Filter() const;
    void Read(const LibraryFilter& filter);
    void ShowDisks();
    void ShowMessage();
    void RestoreCurrent(int previous_row, const std::optional<library::RecordingKey>& previous);
    void ReportCurrent();
    void ChooseCurrent();
    void ScrollToFirst();
    void ReloadIfLoaded();

    LibraryModel* m_model;
    LibraryWatch* m_watch;
    QLineEdit* m_search;
    QPushButton* m_options;
    QComboBox* m_disk;
    ThumbnailList* m_list;
    QLabel* m_message;
    QStackedWidget* m_pages;
    QTimer* m_search_timer;
    QTimer* m_reload_timer;
    bool m_readable = true;
    /// Reload was called.
    bool m_loaded = false;
    LibraryOrder m_order = LibraryOrder::kDisk;
    bool m_only_with_warnings = false;
    bool m_grouped = false;
    /// That of the last reload.
    LibraryFilter m_filter;
    /// The message that the user selected last. It becomes current again when a filter that does not list it is
    /// removed.
    std::optional<library::RecordingKey> m_chosen;
    /// A list that is shown or gets the focus makes its first message current, which the user did not choose.
    bool m_reloading = false;
    /// Is scrolled to when the panel is shown.
    std::optional<library::RecordingKey> m_first;
    /// Becomes current at the next reload.
    std::optional<library::RecordingKey> m_wanted;
    /// Current at the last currentChanged.
    std::optional<library::LibraryEntry> m_reported;
};

}  // namespace zel::desktop
