#include "sim/SimDialog.h"

#include <QCoreApplication>
#include <QFrame>
#include <QVBoxLayout>

SimDialog::SimDialog(QWidget* parent)
    : QDialog(parent, Qt::WindowFlags())
{
    setupForm();
    setWindowFlags(windowFlags() & ~Qt::WindowContextHelpButtonHint);
}

void SimDialog::setupForm()
{
    if (objectName().isEmpty()) {
        setObjectName(QStringLiteral("SimDialog"));
    }
    resize(302, 308);
    QSizePolicy policy(QSizePolicy::MinimumExpanding, QSizePolicy::MinimumExpanding);
    policy.setHorizontalStretch(0);
    policy.setVerticalStretch(0);
    policy.setHeightForWidth(sizePolicy().hasHeightForWidth());
    setSizePolicy(policy);
    setSizeGripEnabled(false);
    m_vboxLayout = new QVBoxLayout(this);
    m_vboxLayout->setObjectName(QStringLiteral("vboxLayout"));
    m_vboxLayout->setSpacing(0);
    m_vboxLayout->setContentsMargins(0, 0, 0, 0);
    m_simFrame = new QFrame(this);
    m_simFrame->setObjectName(QStringLiteral("m_simFrame"));
    m_simFrame->setMinimumSize(300, 300);
    m_simFrame->setFrameShape(QFrame::StyledPanel);
    m_simFrame->setFrameShadow(QFrame::Raised);
    m_vboxLayout->addWidget(m_simFrame);
    setWindowTitle(QCoreApplication::translate("SimDialog", "Simulation"));
}
