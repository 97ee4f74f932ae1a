#include "entry/configura.h"

#include <QWidget>

#include "entry/dispatch.h"
#include "platform/translations.h"
#include "platform/windows.h"

namespace lorvane::entry {

using namespace Qt::StringLiterals;

QString buildVersion(int major, int minor, int revision) {
    const auto lastThree = [](int number) { return (u"000"_s + QString::number(number)).right(3); };
    return QString::number(major) + u'.' + lastThree(minor) + u'.' + lastThree(revision);
}

QString Configura::Ver() const {
    return buildVersion(LORVANE_VERSION_MAJOR, LORVANE_VERSION_MINOR, LORVANE_VERSION_PATCH);
}

void Configura::Start() {
    platform::installItalianTranslations();
    const ReportScreen* report = findReportScreen(moduleValues().codiceStampa);
    if (!report) return;  // a code in no row is ignored, without a message
    QWidget* screen = report->create();
    if (moduleValues().modale.compare(u"1"_s, Qt::CaseInsensitive) == 0) {
        platform::showModal(screen);
    } else {
        screen->show();
    }
}

}  // namespace lorvane::entry
