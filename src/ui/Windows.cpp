// The windows, sheets and screens the shell opens, one factory each. Those still to come
// are stand-ins that show their title and close, so the window works around them.
#include "ui/Windows.h"
#include "core/Tr.h"

#include "app/AppModel.h"
#include "ui/AboutView.h"
#include "ui/HelpView.h"
#include "ui/LinkRow.h"
#include "ui/OnboardingWizard.h"
#include "ui/RecordSheet.h"
#include "ui/ResultView.h"
#include "ui/SettingsSheet.h"
#include "ui/Style.h"

#include <QCoreApplication>
#include <QDialog>
#include <QEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <functional>

namespace {

using Title = const char *;

// A window's content or a screen that only names itself; with `close`, it has a button
// that calls it.
class StandInView : public QWidget {
public:
    StandInView(Title title, QWidget *parent, std::function<void()> close = {}) : QWidget(parent), m_title(title)
    {
        auto *layout = new QVBoxLayout(this);
        layout->setContentsMargins(32, 32, 32, 32);
        layout->setSpacing(16);
        layout->addStretch();
        m_heading = new QLabel(this);
        m_heading->setFont(Style::font(Style::TextSize::title2, QFont::Bold));
        m_heading->setAlignment(Qt::AlignCenter);
        layout->addWidget(m_heading);
        if (close) {
            m_close = new QPushButton(this);
            connect(m_close, &QPushButton::clicked, this, std::move(close));
            layout->addWidget(m_close, 0, Qt::AlignCenter);
        }
        layout->addStretch();
        retranslate();
    }

protected:
    void changeEvent(QEvent *event) override
    {
        if (event->type() == QEvent::LanguageChange)
            retranslate();
        QWidget::changeEvent(event);
    }

private:
    void retranslate()
    {
        m_heading->setText(Tr::tr(m_title));
        if (m_close)
            m_close->setText(Tr::tr("Schließen"));
    }

    Title m_title;
    QLabel *m_heading = nullptr;
    QPushButton *m_close = nullptr;
};

} // namespace

QDialog *makeSettingsSheet(AppModel &app, QWidget *parent)
{
    return new SettingsSheet(app, parent);
}

QDialog *makeRecordSheet(AppModel &app, QWidget *parent)
{
    return new RecordSheet(app, parent);
}

QDialog *makeOnboardingWizard(AppModel &app, QWidget *parent)
{
    return new OnboardingWizard(app, parent);
}

QWidget *makeAboutView(AppModel &, QWidget *parent)
{
    return new AboutView(parent);
}

QWidget *makeHelpView(AppModel &app, QWidget *parent)
{
    return new HelpView(app, parent);
}

QWidget *makeResultView(AppModel &app, QWidget *parent)
{
    return new ResultView(app, parent);
}

QWidget *makeInterviewView(AppModel &app, QWidget *parent)
{
    return new StandInView(QT_TRANSLATE_NOOP("Sagwerk", "Interview"), parent,
                           [&app] { app.setInterviewActive(false); });
}

QWidget *makeLinkField(AppModel &app, QWidget *parent)
{
    return new LinkRow(app, parent);
}
