#pragma once

#include <QWidget>
#include <optional>
#include <string>
#include <vector>

#include "host/library/library.h"

class QLabel;
class QLineEdit;
class QListView;
class QStackedWidget;
class QTimer;

namespace zel::desktop {

class LibraryModel;

/// The library as thumbnails, with a line to search it.
class LibraryPanel : public QWidget {
    Q_OBJECT

  public:
    explicit LibraryPanel(std::string library, QWidget* parent = nullptr);

    /// Reads the library anew; what is chosen stays chosen.
    void Reload();
    /// As Reload, soon; asked often, it is done now and then.
    void ReloadSoon();

    /// As ReloadSoon, and this one is the current one then, if it is shown.
    void ChooseSoon(const library::RecordingKey& key);

    std::optional<library::RecordingKey> Current() const;
    std::vector<library::RecordingKey> Selected() const;
    /// All that the search has left.
    std::vector<library::RecordingKey> Shown() const;
    int Count() const;
    bool IsSearching() const;
    /// Nothing is recorded: it isn't that nothing is found or can be read.
    bool IsEmpty() const;
    void FocusSearch();
    void FocusList();

  Q_SIGNALS:
    /// Another recording is the current one, or it was recorded anew, or there is none any more.
    void chosen();
    void reloaded();
    /// The library can't be read.
    void failed(const QString& reason);

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    void ShowWords();
    void KeepChoice(const std::optional<library::RecordingKey>& before);
    void TellChoice();

    LibraryModel* m_model;
    QLineEdit* m_search;
    QListView* m_list;
    QLabel* m_words;
    QStackedWidget* m_pages;
    QTimer* m_search_timer;
    QTimer* m_reload_timer;
    bool m_readable = true;
    std::optional<library::RecordingKey> m_wanted;  // to be chosen by the next reload
    std::optional<library::LibraryEntry> m_told;    // what was chosen last
};

}  // namespace zel::desktop
