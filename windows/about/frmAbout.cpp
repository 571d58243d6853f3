// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/about/frmAbout.h"

#include "core/text/ProductInfo.h"
#include "windows/about/AboutTexts.h"
#include "windows/about/SystemInfo.h"
#include "windows/widgets/Controls.h"

#include <QFrame>

namespace corvane {

namespace {

QString text(const char16_t *fixed)
{
    return QString::fromUtf16(fixed);
}

QFrame *createRule()
{
    auto *rule = new QFrame;
    rule->setFrameShape(QFrame::HLine);
    rule->setFrameShadow(QFrame::Sunken);
    return rule;
}

} // namespace

frmAbout::frmAbout(SystemInfo &systemInfo, QWidget *parent)
    : ReopenedDialog(u"frmAbout"_s, aboutTexts::caption + text(productInfo::title), parent)
    , m_systemInfo(systemInfo)
{
    auto *rows = new QVBoxLayout(this);
    rows->setContentsMargins(20, 16, 20, 14);
    rows->addLayout(createTexts(), 1);
    rows->addSpacing(6);
    rows->addWidget(createRule());
    rows->addWidget(lblCopyRight);
    rows->addWidget(lblLicence);
    rows->addSpacing(6);
    rows->addLayout(createButtons());
    finishLayout(60);
}

QLayout *frmAbout::createTexts()
{
    lblTitle = createLabel(u"lblTitle"_s);
    QFont large = lblTitle->font();
    large.setPointSizeF(large.pointSizeF() * 1.9);
    large.setBold(true);
    lblTitle->setFont(large);
    lblProductName = createLabel(u"lblProductName"_s);
    lblVersion = createLabel(u"lblVersion"_s);
    lblFileDescription = createLabel(u"lblFileDescription"_s);
    lblDescription = createLabel(u"lblDescription"_s);
    lblDescription->setWordWrap(true);
    lblCopyRight = createLabel(u"lblCopyRight"_s);
    lblLicence = createLabel(u"lblLicence"_s);
    lblLicence->setText(aboutTexts::licence);

    auto *column = new QVBoxLayout;
    column->setSpacing(5);
    controls::addAll(*column, {lblTitle, lblProductName, lblVersion, lblFileDescription});
    column->addSpacing(8);
    controls::addAll(*column, {lblDescription, nullptr});
    return column;
}

QLayout *frmAbout::createButtons()
{
    cmdSysInfo =
        controls::button(u"&System Info..."_s, u"cmdSysInfo"_s, this, &frmAbout::cmdSysInfo_Click);
    cmdQBXAbout =
        controls::button(u"About &GPIB..."_s, u"cmdQBXAbout"_s, this, &frmAbout::cmdQBXAbout_Click);
    cmdOK = controls::button(u"&OK"_s, u"cmdOK"_s, this, &frmAbout::cmdOK_Click);
    for (QPushButton *each : {cmdSysInfo, cmdQBXAbout, cmdOK})
        each->setAutoDefault(false);
    cmdOK->setDefault(true);
    return controls::row({cmdSysInfo, cmdQBXAbout, nullptr, cmdOK});
}

QLabel *frmAbout::createLabel(const QString &name)
{
    auto *label = new QLabel(this);
    label->setObjectName(name);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

void frmAbout::Form_Load()
{
    lblTitle->setText(text(productInfo::title));
    lblProductName->setText(text(productInfo::productName));
    lblVersion->setText(u"Version: %1.%2 Build %3"_s.arg(productInfo::versionMajor)
                            .arg(productInfo::versionMinor)
                            .arg(productInfo::versionRevision));
    lblFileDescription->setText(aboutTexts::partNumber + text(productInfo::fileDescription));
    lblDescription->setText(aboutTexts::description);
    lblCopyRight->setText(text(productInfo::legalCopyright));
    cmdOK->setFocus();
}

void frmAbout::cmdSysInfo_Click()
{
    m_systemInfo.StartSysInfo(this);
}

} // namespace corvane
