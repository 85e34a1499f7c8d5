#include "ui/AIModelPicker.h"
#include "core/Tr.h"

#include "core/AIModel.h"
#include "app/AppModel.h"
#include "app/LanguageManager.h"

#include <QCoreApplication>

AIModelPicker::AIModelPicker(AppModel &app, QWidget *parent) : QComboBox(parent), m_app(app)
{
    setSizeAdjustPolicy(QComboBox::AdjustToContents);
    for (const AIModel &model : AIModel::all())
        addItem(QString(), model.id);
    connect(this, &QComboBox::activated, this, [this](int index) {
        m_app.setActiveModelId(itemData(index).toString());
    });
    connect(&app, &AppModel::activeModelIdChanged, this, &AIModelPicker::refresh);
    connect(&LanguageManager::instance(), &LanguageManager::languageChanged, this, &AIModelPicker::refresh);
    refresh();
}

void AIModelPicker::refresh()
{
    const QSignalBlocker blocker(this);
    const QList<AIModel> &models = AIModel::all();
    for (int i = 0; i < models.size(); ++i)
        setItemText(i, Tr::tr(models[i].name.toUtf8().constData()));
    // An id the catalogue lacks shows as the model it stands for, without rewriting it.
    setCurrentIndex(findData(AIModel::by(m_app.activeModelId()).id));
}
