// The preview window: the report viewer filling the window, a timer that
// closes it when the host asks, and the one shared instance the screens use.
// It opens at the size and zoom the user last left it at (kept in the host's
// settings), else at a size that shows a whole page on its screen.
#pragma once

#include <QPointer>
#include <QWidget>
#include <memory>

#include "engine/report.h"

class QTimer;

namespace lorvane::engine {
class ReportViewer;
}

namespace lorvane::output {

// Twips (1440 to the inch) to pixels at `dpi` pixels per inch, rounded.
int twipsToPixels(int twips, double dpi);

class FrmAnteprima : public QWidget {
    Q_OBJECT

  public:
    // The client area of the window, in twips.
    static constexpr int ClientWidthTwips = 10800;
    static constexpr int ClientHeightTwips = 6735;

    // The shared window: made and loaded on first use, and again on the
    // first use after each unload.
    static FrmAnteprima& instance();

    // The host's User as author, then the report into the viewer, rendered
    // and shown from page 1. The window itself is not shown. Failures of the
    // engine pass to the caller.
    void AnteprimaReport(std::shared_ptr<engine::Report> report);

    engine::ReportViewer* Report1() const { return report1_; }
    QTimer* Timer1() const { return timer1_; }

    // Reads the host's ChiudiFinestre; when it is True, stops the timer and
    // unloads the window.
    void Timer1_Timer();
    // Closes the window; it is deleted as soon as control returns to the event
    // loop, and instance() makes a new one from now on.
    void Unload();

    // The host's settings that keep the size (pixels) and the zoom chosen.
    static constexpr char SettingsSection[] = "Anteprima";

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    FrmAnteprima();
    void Form_Load();
    void Form_Resize();
    // Size, zoom and place on first showing, from the settings or the page.
    void placeOnScreen();
    QSize wholePageSize(const QRect& area) const;
    void saveChoices();

    engine::ReportViewer* report1_ = nullptr;
    QTimer* timer1_ = nullptr;
    bool unloaded_ = false;
    bool placed_ = false;
    QSize openedSize_;
    int openedZoom_ = 0;

    static QPointer<FrmAnteprima>& current();
};

}  // namespace lorvane::output
