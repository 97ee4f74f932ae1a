#include "output/frm_anteprima.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QShowEvent>
#include <QStyle>
#include <QTimer>
#include <algorithm>
#include <cmath>

#include "engine/report_viewer.h"
#include "entry/module_values.h"
#include "output/export.h"
#include "platform/windows_paths.h"

namespace lorvane::output {

using namespace Qt::StringLiterals;

int twipsToPixels(int twips, double dpi) { return int(std::lround(twips * dpi / 1440.0)); }

namespace {

// The file chooser of the viewer's export buttons starts where the screens
// export to.
QString exportFolderOf(int formatType) {
    const entry::HostPtr& host = entry::moduleValues().host;
    if (!host) return QString();
    for (const ExportKind& kind : {PdfExport, WordExport, ExcelExport}) {
        if (kind.format == formatType)
            return platform::toLocalPath(host->Percorso() + QLatin1String(kind.folder));
    }
    return QString();
}

}  // namespace

QPointer<FrmAnteprima>& FrmAnteprima::current() {
    static QPointer<FrmAnteprima> window;
    return window;
}

FrmAnteprima& FrmAnteprima::instance() {
    if (!current() || current()->unloaded_) current() = new FrmAnteprima();
    return *current();
}

FrmAnteprima::FrmAnteprima() {
    setObjectName(u"FrmAnteprima"_s);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(u"Anteprima"_s);
    resize(twipsToPixels(ClientWidthTwips, logicalDpiX()),
           twipsToPixels(ClientHeightTwips, logicalDpiY()));

    report1_ = new engine::ReportViewer(this);
    report1_->setObjectName(u"Report1"_s);
    report1_->setExportFolder(exportFolderOf);
    connect(report1_, &engine::ReportViewer::closeRequested, this, &FrmAnteprima::Unload);

    timer1_ = new QTimer(this);
    timer1_->setObjectName(u"Timer1"_s);
    timer1_->setInterval(3000);
    connect(timer1_, &QTimer::timeout, this, &FrmAnteprima::Timer1_Timer);

    Form_Load();
    Form_Resize();
}

void FrmAnteprima::Form_Load() {
    if (const QScreen* screen = QGuiApplication::primaryScreen()) {
        const QRect area = screen->geometry();
        move(area.x() + (area.width() - width()) / 2, area.y() + (area.height() - height()) / 2);
    }
    timer1_->start();
}

// A window made very small leaves the viewer as small; nothing here may fail.
void FrmAnteprima::Form_Resize() {
    try {
        report1_->setGeometry(0, 0, std::max(width(), 0), std::max(height(), 0));
    } catch (...) {
    }
}

void FrmAnteprima::AnteprimaReport(std::shared_ptr<engine::Report> report) {
    if (const entry::HostPtr& host = entry::moduleValues().host) report->SetAuthor(host->User());
    report1_->setReportSource(report);
    report1_->ViewReport();
}

void FrmAnteprima::showEvent(QShowEvent* event) {
    if (!placed_) {
        placed_ = true;
        placeOnScreen();
    }
    QWidget::showEvent(event);
}

void FrmAnteprima::placeOnScreen() {
    const QScreen* screen = this->screen() ? this->screen() : QGuiApplication::primaryScreen();
    if (!screen) return;
    const QRect area = screen->availableGeometry();
    QSize size;
    int zoom = engine::ReportViewer::ZoomWholePage;
    if (const entry::HostPtr& host = entry::moduleValues().host) {
        const QString section = QLatin1String(SettingsSection);
        size = QSize(host->LeggiSettaggio(section, u"Larghezza"_s, QString()).toInt(),
                     host->LeggiSettaggio(section, u"Altezza"_s, QString()).toInt());
        const int saved = host->LeggiSettaggio(section, u"Zoom"_s, QString()).toInt();
        if (saved > 0) zoom = saved;
    }
    if (size.width() < 200 || size.height() < 150) size = wholePageSize(area);
    resize(size.boundedTo(area.size()));
    move(area.x() + (area.width() - width()) / 2, area.y() + (area.height() - height()) / 2);
    report1_->setZoom(zoom);
    openedSize_ = this->size();
    openedZoom_ = report1_->zoom();
}

// As tall as the screen allows (less room for the window's frame), as wide
// as a whole page at that height needs, and never narrower than the toolbar.
QSize FrmAnteprima::wholePageSize(const QRect& area) const {
    constexpr int frameAllowance = 40;  // pixels of title bar and borders
    constexpr int pageBorder = 2 * 12 + 4;
    const int height = area.height() - frameAllowance;
    const auto* toolbar = report1_->findChild<QWidget*>(u"Toolbar"_s);
    const auto* status = report1_->findChild<QWidget*>(u"Status"_s);
    const int chrome = (toolbar ? toolbar->sizeHint().height() : 0) +
                       (status ? status->sizeHint().height() : 0) + pageBorder;
    const engine::PageDocument& document = report1_->document();
    const QSizeF page =
        document.pages.empty() ? QSizeF(595.276, 841.89) : document.pages.front().size;
    const double pageHeight = std::max(100, height - chrome);
    int width = int(pageHeight * page.width() / page.height()) + pageBorder +
                report1_->style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    if (report1_->displayGroupTree()) {
        if (const auto* tree = report1_->findChild<QWidget*>(u"GroupTree"_s))
            width += tree->width();
    }
    if (toolbar) width = std::max(width, toolbar->sizeHint().width() + 8);
    return QSize(std::min(width, area.width()), height);
}

// Only what the user changed is written: a preview never shown writes nothing.
void FrmAnteprima::saveChoices() {
    const entry::HostPtr& host = entry::moduleValues().host;
    if (!placed_ || !host) return;
    const QString section = QLatin1String(SettingsSection);
    if (size() != openedSize_) {
        QString width = QString::number(this->width());
        QString height = QString::number(this->height());
        host->SalvaSettaggio(section, u"Larghezza"_s, width);
        host->SalvaSettaggio(section, u"Altezza"_s, height);
    }
    if (report1_->zoom() != openedZoom_) {
        QString zoom = QString::number(report1_->zoom());
        host->SalvaSettaggio(section, u"Zoom"_s, zoom);
    }
    openedSize_ = size();
    openedZoom_ = report1_->zoom();
}

void FrmAnteprima::Timer1_Timer() {
    const entry::HostPtr& host = entry::moduleValues().host;
    if (host && host->ChiudiFinestre()) {
        timer1_->stop();
        Unload();
    }
}

void FrmAnteprima::Unload() {
    timer1_->stop();
    unloaded_ = true;
    close();
}

void FrmAnteprima::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    Form_Resize();
}

void FrmAnteprima::closeEvent(QCloseEvent* event) {
    QWidget::closeEvent(event);
    if (event->isAccepted()) {
        timer1_->stop();
        saveChoices();
        unloaded_ = true;
    }
}

}  // namespace lorvane::output
