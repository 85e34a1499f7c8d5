#pragma once

#include "ui/HelpContent.h"

#include <QWidget>

#include <optional>

class AppModel;
class QLabel;
class QListWidget;
class QScrollArea;

// One help section: its heading and its blocks, with inline Markdown drawn as rich text.
class HelpSectionBody : public QWidget {
    Q_OBJECT

public:
    explicit HelpSectionBody(const HelpSection &section, QWidget *parent = nullptr);
    const HelpSection &section() const { return m_section; }

private:
    HelpSection m_section;
};

// The help window: the topics of the book in the interface's language on the left, the
// chosen one on the right. German shows the German book, every other language English.
class HelpView : public QWidget {
    Q_OBJECT

public:
    explicit HelpView(AppModel &app, QWidget *parent = nullptr);

    // The language code of the book for `appLanguage`: the system's for "system".
    static QString lang(const QString &appLanguage);
    // The section of `book` with `selection` as id, else the first; none for an empty book.
    static std::optional<HelpSection> shown(const QList<HelpSection> &book, const std::optional<QString> &selection);

    std::optional<QString> selection() const { return m_selection; }
    void select(const QString &id);
    // The section on show, or none.
    const HelpSectionBody *body() const { return m_body; }

protected:
    void changeEvent(QEvent *event) override;

private:
    const QList<HelpSection> &book() const;
    void rebuildList();
    void showSelection();

    AppModel &m_app;
    std::optional<QString> m_selection;
    QListWidget *m_list = nullptr;
    QScrollArea *m_scroll = nullptr;
    HelpSectionBody *m_body = nullptr;
};
