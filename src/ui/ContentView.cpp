#include "ui/ContentView.h"
#include "core/Tr.h"

#include "app/AppModel.h"
#include "ui/DetailPane.h"
#include "ui/Sidebar.h"
#include "ui/Style.h"
#include "ui/Windows.h"

#include <QCoreApplication>
#include <QDialog>
#include <QEvent>
#include <QHBoxLayout>
#include <QMessageBox>
#include <QPushButton>
#include <QSplitter>

ContentView::ContentView(AppModel &app, QWidget *parent) : QWidget(parent), m_app(app)
{
    setMinimumSize(820, 560);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);

    m_splitter = new QSplitter(Qt::Horizontal, this);
    m_splitter->setChildrenCollapsible(false);
    m_splitter->setHandleWidth(1);
    m_sidebar = new Sidebar(app, m_splitter);
    m_detail = new DetailPane(app, m_splitter);
    m_splitter->addWidget(m_sidebar);
    m_splitter->addWidget(m_detail);
    m_splitter->setStretchFactor(0, 0);
    m_splitter->setStretchFactor(1, 1);
    m_splitter->setSizes({270, 10000});
    layout->addWidget(m_splitter);

    m_settings = {[&app] { return app.showSettings(); }, [&app] { app.setShowSettings(false); }, makeSettingsSheet, {}};
    m_recorder = {[&app] { return app.showRecorder(); }, [&app] { app.setShowRecorder(false); }, makeRecordSheet, {}};
    m_onboarding = {[&app] { return app.showOnboarding(); }, [&app] { app.setShowOnboarding(false); },
                    makeOnboardingWizard, {}};
    connect(&app, &AppModel::showSettingsChanged, this, [this] { updateSheet(m_settings); });
    connect(&app, &AppModel::showRecorderChanged, this, [this] { updateSheet(m_recorder); });
    connect(&app, &AppModel::showOnboardingChanged, this, [this] { updateSheet(m_onboarding); });
    connect(&app, &AppModel::errorMessageChanged, this, &ContentView::updateAlert);

    // What stands at start shows as soon as the window is up.
    QMetaObject::invokeMethod(
        this,
        [this] {
            updateSheet(m_onboarding);
            updateSheet(m_settings);
            updateSheet(m_recorder);
            updateAlert();
        },
        Qt::QueuedConnection);
}

void ContentView::updateSheet(Sheet &sheet)
{
    if (sheet.shown()) {
        if (sheet.dialog)
            return;
        QDialog *dialog = sheet.make(m_app, window());
        dialog->setWindowModality(Qt::WindowModal);
        dialog->setAttribute(Qt::WA_DeleteOnClose);
        sheet.dialog = dialog;
        connect(dialog, &QDialog::finished, this, [&sheet, dialog] {
            if (sheet.dialog == dialog)
                sheet.dialog = nullptr;
            sheet.clear();
        });
        dialog->open();
    } else if (sheet.dialog) {
        // Cleared elsewhere (the sheet's own work is done): it goes whatever it would
        // say to a close.
        QDialog *dialog = sheet.dialog;
        sheet.dialog = nullptr;
        dialog->done(QDialog::Rejected);
    }
}

void ContentView::updateAlert()
{
    const std::optional<QString> &message = m_app.errorMessage();
    if (!message) {
        if (m_alert)
            m_alert->close();
        return;
    }
    if (m_alert) {
        m_alert->setInformativeText(*message);
        m_alert->setDetailedText(m_app.errorDetails());
        return;
    }
    m_alert = new QMessageBox(window());
    m_alert->setAttribute(Qt::WA_DeleteOnClose);
    m_alert->setIcon(QMessageBox::Warning);
    m_alert->setWindowTitle(Tr::tr("Fehler"));
    m_alert->setText(Tr::tr("Fehler"));
    m_alert->setInformativeText(*message);
    // A program's own lines (ffmpeg's, the network layer's) wait behind "Details".
    m_alert->setDetailedText(m_app.errorDetails());
    // A failed download offers to try again right there.
    if (const std::function<void()> retry = m_app.errorRetry()) {
        QPushButton *again = m_alert->addButton(Tr::tr("Erneut versuchen"), QMessageBox::AcceptRole);
        again->setObjectName(QStringLiteral("retry"));
        // The alert's end clears the error and its retry: this button keeps its own.
        connect(again, &QPushButton::clicked, &m_app, retry);
    }
    QPushButton *ok = m_alert->addButton(Tr::tr("OK"), QMessageBox::RejectRole);
    ok->setObjectName(QStringLiteral("ok"));
    m_alert->setDefaultButton(ok);
    m_alert->setEscapeButton(ok);
    Style::styleAlert(m_alert);
    connect(m_alert, &QMessageBox::finished, &m_app, [app = &m_app] { app->setErrorMessage(std::nullopt); });
    m_alert->open();
}

void ContentView::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange && m_alert) {
        m_alert->setWindowTitle(Tr::tr("Fehler"));
        m_alert->setText(Tr::tr("Fehler"));
        if (auto *ok = m_alert->findChild<QPushButton *>(QStringLiteral("ok")))
            ok->setText(Tr::tr("OK"));
        if (auto *again = m_alert->findChild<QPushButton *>(QStringLiteral("retry")))
            again->setText(Tr::tr("Erneut versuchen"));
    }
    QWidget::changeEvent(event);
}
