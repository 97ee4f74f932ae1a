// The report viewer: shows a report's pages as they will print, with a toolbar
// to move between pages, zoom, find text, print, export and close, and the
// group tree of the report beside the pages.
#pragma once

#include <QRectF>
#include <QString>
#include <QWidget>
#include <functional>
#include <memory>
#include <vector>

#include "engine/page_document.h"
#include "engine/report.h"

class QComboBox;
class QKeyEvent;
class QWheelEvent;
class QLabel;
class QLineEdit;
class QPagedPaintDevice;
class QScrollArea;
class QSplitter;
class QToolBar;
class QToolButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace lorvane::engine {

class PageCanvas;

// Draws pages `firstPage`..`lastPage` (1-based, inclusive; 0 for the last
// page) of `document` on `device`, one device page per report page, each
// page of the device sized as the report's page with no margins. Throws
// RuntimeError when the device cannot be painted on.
void printDocument(const PageDocument& document, QPagedPaintDevice& device, int firstPage = 1,
                   int lastPage = 0);

// What the viewer asks of the file chooser when it exports.
struct SaveFileRequest {
    QString caption;
    QString nameFilter;     // "Documenti PDF (*.pdf)"
    QString defaultSuffix;  // "pdf", added when the user types a bare name
    QString suggestedName;  // the report's title
    QString folder;         // where the chooser starts; "" for the chooser's own choice
};

// One place where the text searched for stands: its page (1-based) and its
// rectangle on the page, in points.
struct TextMatch {
    int page = 0;
    QRectF rect;
};

class ReportViewer : public QWidget {
    Q_OBJECT
    Q_PROPERTY(bool DisplayGroupTree READ displayGroupTree WRITE setDisplayGroupTree)
    Q_PROPERTY(std::shared_ptr<lorvane::engine::Report> ReportSource READ reportSource WRITE
                   setReportSource)

  public:
    // Zoom levels besides a percentage, numbered as the viewer's callers know them.
    static constexpr int ZoomPageWidth = 1;
    static constexpr int ZoomWholePage = 2;

    // Takes the parent's dialog and prints the document (the real one shows
    // the print dialog and prints on the chosen printer).
    using PrintHandler = std::function<void(QWidget* parent, const PageDocument& document)>;
    // Gives the path the user chose to export to, or "" when cancelled.
    using FileChooser = std::function<QString(QWidget* parent, const SaveFileRequest& request)>;

    explicit ReportViewer(QWidget* parent = nullptr);
    ~ReportViewer() override;

    std::shared_ptr<Report> reportSource() const { return report_; }
    // The report to show; nothing is read until ViewReport.
    void setReportSource(std::shared_ptr<Report> report);
    // Renders the report source (reading its work file when needed) and shows
    // page 1. Failures of the engine pass to the caller; with no source the
    // viewer shows no pages.
    void ViewReport();
    // Shows a document already rendered, from page 1.
    void setDocument(PageDocument document);
    const PageDocument& document() const { return document_; }

    int pageCount() const { return int(document_.pages.size()); }
    // 1-based; 0 when there are no pages.
    int currentPage() const { return currentPage_; }
    // Goes to page `page` (1-based), kept within the first and the last page.
    void goToPage(int page);

    // ZoomPageWidth, ZoomWholePage or a percentage (10 to 400).
    void setZoom(int level);
    int zoom() const { return zoom_; }
    // Pixels of the screen per point of the page at the present zoom.
    double scale() const { return scale_; }

    bool displayGroupTree() const { return displayGroupTree_; }
    void setDisplayGroupTree(bool display);

    // Finds `text` (ignoring case). A text not searched for before starts on
    // the current page, then the pages after it, going round to the first;
    // the same text again steps to the next place. Every place on the page
    // shown is highlighted, the current one more strongly. Gives false and
    // says so in the status line when no page holds it.
    bool find(const QString& text);
    // The next and the previous place of the text in the search box (F3,
    // Shift+F3).
    bool findNext();
    bool findPrevious();
    // Every place of the last text searched for, in page order; the current one.
    const std::vector<TextMatch>& matches() const { return matches_; }
    int currentMatch() const { return currentMatch_; }
    QString statusText() const;

    // Print the document through the handler; export it to a chosen file.
    void print();
    void exportTo(int formatType);

    // Replace the print dialog and the file chooser for every viewer; an
    // empty function puts the real one back.
    static void setPrintHandler(PrintHandler handler);
    static void setFileChooser(FileChooser chooser);

    // Gives the folder the file chooser starts in for a format ("" for the
    // chooser's own choice); asked at each export.
    using ExportFolder = std::function<QString(int formatType)>;
    void setExportFolder(ExportFolder folder) { exportFolder_ = std::move(folder); }

  signals:
    void closeRequested();
    void pageChanged(int page);
    // The user chose a zoom level in the toolbar.
    void zoomChosen(int level);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    // F3 and Shift+F3 step through the places found; PgUp, PgDn, Home and End
    // move across the pages; Escape asks to close.
    void keyPressEvent(QKeyEvent* event) override;

  private:
    bool pageKey(int key);
    bool wheelTurnsPage(const QWheelEvent& event);
    void collectMatches(const QString& text);
    bool hasMatches(const QString& text);
    void showMatch(int index);
    bool currentMatchShown() const;
    void showPage(int page, bool atBottom);
    void buildToolbar(QToolBar* bar);
    void fillGroupTree();
    void updateScale();
    void updateControls();
    void pageNumberEntered();
    void groupClicked(QTreeWidgetItem* item);
    void setStatus(const QString& text);
    void updateHighlights();

    std::shared_ptr<Report> report_;
    PageDocument document_;
    int currentPage_ = 0;
    int zoom_ = ZoomPageWidth;
    double scale_ = 1;
    bool displayGroupTree_ = true;
    QString matchedText_;
    std::vector<TextMatch> matches_;
    int currentMatch_ = -1;
    int wheelAngle_ = 0;  // eighths of a degree turned at the top or bottom of a page
    ExportFolder exportFolder_;

    QToolButton* firstButton_ = nullptr;
    QToolButton* previousButton_ = nullptr;
    QToolButton* nextButton_ = nullptr;
    QToolButton* lastButton_ = nullptr;
    QLineEdit* pageNumber_ = nullptr;
    QComboBox* zoomBox_ = nullptr;
    QLineEdit* searchText_ = nullptr;
    QToolButton* findButton_ = nullptr;
    QToolButton* printButton_ = nullptr;
    QToolButton* pdfButton_ = nullptr;
    QToolButton* wordButton_ = nullptr;
    QToolButton* excelButton_ = nullptr;
    QToolButton* closeButton_ = nullptr;
    QSplitter* splitter_ = nullptr;
    QTreeWidget* groupTree_ = nullptr;
    QScrollArea* scrollArea_ = nullptr;
    PageCanvas* canvas_ = nullptr;
    QLabel* status_ = nullptr;
};

}  // namespace lorvane::engine
