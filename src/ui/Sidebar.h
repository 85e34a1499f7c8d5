#pragma once

#include <QWidget>

class AppModel;
class HistoryFilter;
class QLabel;
class QLineEdit;
class QListWidget;
class QMenu;
class QPushButton;
struct HistoryItem;

// The left column: the way to the settings, and the history, newest first. A click shows
// an item; its context menu renames it (also F2) or deletes it at once.
class Sidebar : public QWidget {
    Q_OBJECT

public:
    explicit Sidebar(AppModel &app, QWidget *parent = nullptr);

    QPushButton *settingsButton() const { return m_settings; }
    QLabel *historyHeading() const { return m_heading; }
    QListWidget *historyList() const { return m_list; }
    // Narrows the list to items whose name or text holds what is typed.
    QLineEdit *historySearch() const { return m_search; }
    // The context menu of a row, as it opens on a right click.
    QMenu *contextMenu(int row);

protected:
    void changeEvent(QEvent *event) override;

private:
    void askName(const HistoryItem &item);
    void rebuild();
    void selectCurrent();
    void retranslate();
    void restyle();
    void showMatches();

    AppModel &m_app;
    QPushButton *m_settings = nullptr;
    QLabel *m_heading = nullptr;
    QListWidget *m_list = nullptr;
    QLineEdit *m_search = nullptr;
    HistoryFilter *m_filter = nullptr;
    bool m_syncing = false;
};
