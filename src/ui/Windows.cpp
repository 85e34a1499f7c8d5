// The windows, sheets and screens the shell opens, one factory each.
#include "ui/Windows.h"

#include "app/AppModel.h"
#include "ui/AboutView.h"
#include "ui/HelpView.h"
#include "ui/InterviewView.h"
#include "ui/LinkRow.h"
#include "ui/OnboardingWizard.h"
#include "ui/RecordSheet.h"
#include "ui/ResultView.h"
#include "ui/SettingsSheet.h"

#include <QDialog>

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
    return new InterviewView(app, parent);
}

QWidget *makeLinkField(AppModel &app, QWidget *parent)
{
    return new LinkRow(app, parent);
}
