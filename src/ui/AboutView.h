#pragma once

#include <QWidget>

class QLabel;

// The maker, the product line and the version.
class AboutView : public QWidget {
    Q_OBJECT

public:
    explicit AboutView(QWidget *parent = nullptr);

    // The version the program was built as, or "1.0" when none was given.
    static QString version();

protected:
    void changeEvent(QEvent *event) override;

private:
    void refresh();

    QLabel *m_logo = nullptr;
    QLabel *m_maker = nullptr;
    QLabel *m_person = nullptr;
    QLabel *m_product = nullptr;
    QLabel *m_line = nullptr;
    QLabel *m_version = nullptr;
    QLabel *m_copyright = nullptr;
};
