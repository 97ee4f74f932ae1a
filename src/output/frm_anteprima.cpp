#include "output/frm_anteprima.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QTimer>
#include <algorithm>
#include <cmath>

#include "entry/module_values.h"
#include "engine/report_viewer.h"

namespace lorvane::output {

using namespace Qt::StringLiterals;

int twipsToPixels(int twips, double dpi) { return int(std::lround(twips * dpi / 1440.0)); }

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
        unloaded_ = true;
    }
}

}  // namespace lorvane::output
