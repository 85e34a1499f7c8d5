#pragma once

#include <QWidget>

class AppModel;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;

// The link group of the drop zone: a field for a podcast or audio link with its
// "Laden" button, and below it, while a link is handled, either the download's
// percentage or a spinner with the status line. At most 540 wide.
class LinkRow : public QWidget {
    Q_OBJECT

public:
    LinkRow(AppModel &app, QWidget *parent = nullptr);

    // Hands the field's text, trimmed, to the link import; an empty text does nothing.
    // The field keeps its text.
    void submitLink();

protected:
    void changeEvent(QEvent *event) override;

private:
    void refresh();
    void retranslate();

    AppModel &m_app;
    QLineEdit *m_field;
    QPushButton *m_load;
    QWidget *m_loadSpinner;
    QWidget *m_progressRow;
    QProgressBar *m_bar;
    QLabel *m_percent;
    QWidget *m_statusSpinner;
    QLabel *m_status;
};
