#include "editor/ColorChooser.h"

#include "color/GroupProfile.h"
#include "color/VelaColor.h"
#include "engine/Effect.h"
#include "map/Group.h"
#include "map/MapModel.h"
#include "picker/ColorPickerWidget.h"

#include <QCoreApplication>
#include <QDialog>
#include <QGridLayout>
#include <QPointer>
#include <QSize>
#include <QWidget>

using VelaColorPickerLib::ColorPickerWidget;

namespace {
constexpr QSize kLeastSize(800, 600); // large fonts need more
} // namespace

void chooseColor(const Effect& effect, MapModel* model, VelaColor current, QWidget* form,
                 const ColorHandler& handler)
{
    const QPointer<QWidget> guard(form);
    QDialog dialog;
    dialog.setModal(true);
    dialog.setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    dialog.setWindowTitle(QCoreApplication::translate("ColorChooser", "Select Color"));
    auto* grid = new QGridLayout(&dialog);
    auto* picker = new ColorPickerWidget(&dialog);
    picker->setMinimumSize(kLeastSize.expandedTo(picker->minimumSizeHint()));
    grid->addWidget(picker, 0, 0, 1, -1);
    QObject::connect(picker, &ColorPickerWidget::accepted, &dialog, &QDialog::accept);
    QObject::connect(picker, &ColorPickerWidget::rejected, &dialog, &QDialog::reject);

    if (Group* const group = model->group(effect.gid())) {
        QList<GroupProfile> profiles;
        for (const GroupProfile* const profile : group->profileList()) {
            profiles.append(*profile);
        }
        if (!profiles.isEmpty()) {
            picker->setProfiles(profiles);
            picker->setPrimaryProfile(group->primaryProfile());
        }
    }
    picker->setColor(current);
    const QMetaObject::Connection live =
        QObject::connect(picker, &ColorPickerWidget::mainColorChanged, form,
                         [&handler](const VelaColor& color) { handler(color); });
    if (dialog.exec() == QDialog::Rejected && guard != nullptr) {
        handler(current);
    }
    QObject::disconnect(live);
}
