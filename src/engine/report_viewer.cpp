#include "engine/report_viewer.h"

#include <QComboBox>
#include <QDir>
#include <QEvent>
#include <QFileDialog>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPageLayout>
#include <QPageSize>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QScrollArea>
#include <QScrollBar>
#include <QSplitter>
#include <QToolBar>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "engine/painter.h"
#include "platform/error_handling.h"
#include "platform/runtime_error.h"

namespace lorvane::engine {

using namespace Qt::StringLiterals;

namespace {

// The grey border around a page on screen, in pixels.
constexpr int pageMarginPx = 12;
// Any page size works, but a document with no pages still needs one to lay
// out the empty view: A4, in points.
const QSizeF a4Points(595.276, 841.89);

QPageLayout pageLayoutOf(const Page& page) {
    const QSizeF portrait(std::min(page.size.width(), page.size.height()),
                          std::max(page.size.width(), page.size.height()));
    const auto orientation =
        page.size.width() > page.size.height() ? QPageLayout::Landscape : QPageLayout::Portrait;
    return QPageLayout(QPageSize(portrait, QPageSize::Point), orientation, QMarginsF(0, 0, 0, 0),
                       QPageLayout::Point);
}

// The places of `text` on a page, top to bottom, then left to right.
std::vector<QRectF> placesOn(const Page& page, const QString& text) {
    std::vector<QRectF> places;
    for (const PlacedBand& band : page.bands) {
        for (const Primitive& item : band.items) {
            const auto* textItem = std::get_if<TextItem>(&item);
            if (!textItem) continue;
            for (qsizetype at = textItem->text.indexOf(text, 0, Qt::CaseInsensitive); at >= 0;
                 at = textItem->text.indexOf(text, at + text.size(), Qt::CaseInsensitive)) {
                places.push_back(textSpanRect(*textItem, at, text.size()));
            }
        }
    }
    std::stable_sort(places.begin(), places.end(), [](const QRectF& a, const QRectF& b) {
        if (std::abs(a.top() - b.top()) > 1) return a.top() < b.top();
        return a.left() < b.left();
    });
    return places;
}

void printWithDialog(QWidget* parent, const PageDocument& document) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(document.title);
    printer.setFullPage(true);
    if (!document.pages.empty()) printer.setPageLayout(pageLayoutOf(document.pages.front()));
    QPrintDialog dialog(&printer, parent);
    dialog.setMinMax(1, int(document.pages.size()));
    if (dialog.exec() != QDialog::Accepted) return;
    int first = 1;
    int last = 0;
    if (printer.printRange() == QPrinter::PageRange) {
        first = printer.fromPage();
        last = printer.toPage();
    }
    printDocument(document, printer, first, last);
}

QString chooseWithDialog(QWidget* parent, const SaveFileRequest& request) {
    QFileDialog dialog(parent, request.caption);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setNameFilter(request.nameFilter);
    dialog.setDefaultSuffix(request.defaultSuffix);
    if (!request.folder.isEmpty()) {
        QDir().mkpath(request.folder);
        dialog.setDirectory(request.folder);
    }
    dialog.selectFile(request.suggestedName);
    if (dialog.exec() != QDialog::Accepted) return QString();
    return dialog.selectedFiles().value(0);
}

ReportViewer::PrintHandler& printHandler() {
    static ReportViewer::PrintHandler handler;
    return handler;
}

ReportViewer::FileChooser& fileChooser() {
    static ReportViewer::FileChooser chooser;
    return chooser;
}

}  // namespace

void printDocument(const PageDocument& document, QPagedPaintDevice& device, int firstPage,
                   int lastPage) {
    const int count = int(document.pages.size());
    const int first = std::max(firstPage, 1);
    const int last = lastPage <= 0 || lastPage > count ? count : lastPage;
    if (first > last) return;
    device.setPageLayout(pageLayoutOf(document.pages[first - 1]));
    QPainter painter;
    if (!painter.begin(&device)) throw RuntimeError(u"Impossibile avviare la stampa."_s);
    for (int page = first; page <= last; ++page) {
        const Page& current = document.pages[page - 1];
        if (page > first) {
            device.setPageLayout(pageLayoutOf(current));
            device.newPage();
        }
        const double scale = device.logicalDpiX() / 72.0;
        painter.save();
        painter.scale(scale, scale);
        paintPage(painter, current);
        painter.restore();
    }
    painter.end();
}

// The current page, white on the grey of the view, at the viewer's scale.
class PageCanvas : public QWidget {
  public:
    explicit PageCanvas(QWidget* parent) : QWidget(parent) {}

    void show(const Page* page, double scale) {
        page_ = page;
        scale_ = scale;
        const QSizeF size = (page ? page->size : a4Points) * scale;
        setFixedSize(int(size.width() + 0.5) + 2 * pageMarginPx,
                     int(size.height() + 0.5) + 2 * pageMarginPx);
        update();
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.fillRect(rect(), QColor(128, 128, 128));
        if (!page_) return;
        const QRect sheet =
            rect().adjusted(pageMarginPx, pageMarginPx, -pageMarginPx, -pageMarginPx);
        painter.fillRect(sheet.translated(3, 3), QColor(64, 64, 64));
        painter.fillRect(sheet, Qt::white);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setRenderHint(QPainter::TextAntialiasing);
        painter.translate(pageMarginPx, pageMarginPx);
        painter.scale(scale_, scale_);
        paintPage(painter, *page_);
        painter.setPen(Qt::NoPen);
        for (const QRectF& place : highlights_) {
            painter.setBrush(place == current_ ? QColor(255, 128, 0, 130)
                                               : QColor(255, 230, 0, 120));
            painter.drawRect(place.adjusted(-0.5, -0.5, 0.5, 0.5));
        }
    }

  public:
    // The places of a text found on the page, `current` among them or empty.
    void setHighlights(std::vector<QRectF> places, QRectF current) {
        highlights_ = std::move(places);
        current_ = current;
        update();
    }

  private:
    const Page* page_ = nullptr;
    double scale_ = 1;
    std::vector<QRectF> highlights_;
    QRectF current_;
};

ReportViewer::ReportViewer(QWidget* parent) : QWidget(parent) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);

    auto* bar = new QToolBar(this);
    bar->setObjectName(u"Toolbar"_s);
    buildToolbar(bar);
    layout->addWidget(bar);

    splitter_ = new QSplitter(Qt::Horizontal, this);
    groupTree_ = new QTreeWidget(splitter_);
    groupTree_->setObjectName(u"GroupTree"_s);
    groupTree_->setColumnCount(1);
    groupTree_->header()->hide();
    connect(groupTree_, &QTreeWidget::itemClicked, this,
            [this](QTreeWidgetItem* item) { groupClicked(item); });

    scrollArea_ = new QScrollArea(splitter_);
    scrollArea_->setObjectName(u"Pages"_s);
    scrollArea_->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    scrollArea_->setBackgroundRole(QPalette::Dark);
    QPalette grey = scrollArea_->palette();
    grey.setColor(QPalette::Dark, QColor(128, 128, 128));
    scrollArea_->setPalette(grey);
    canvas_ = new PageCanvas(scrollArea_);
    scrollArea_->setWidget(canvas_);
    scrollArea_->setFocusPolicy(Qt::StrongFocus);
    scrollArea_->installEventFilter(this);
    scrollArea_->viewport()->installEventFilter(this);
    setFocusProxy(scrollArea_);
    splitter_->addWidget(groupTree_);
    splitter_->addWidget(scrollArea_);
    splitter_->setStretchFactor(0, 0);
    splitter_->setStretchFactor(1, 1);
    splitter_->setSizes({180, 600});
    layout->addWidget(splitter_, 1);

    status_ = new QLabel(this);
    status_->setObjectName(u"Status"_s);
    status_->setContentsMargins(4, 2, 4, 2);
    layout->addWidget(status_);

    updateScale();
    updateControls();
}

ReportViewer::~ReportViewer() = default;

// Tools that do not fit in the width of the viewer go to the toolbar's
// extension menu, so the preview can be made as narrow as the user likes.
void ReportViewer::buildToolbar(QToolBar* bar) {
    const auto button = [&](const QString& name, const QString& text, auto slot) {
        auto* result = new QToolButton(bar);
        result->setObjectName(name);
        result->setText(text);
        result->setToolButtonStyle(Qt::ToolButtonTextOnly);
        connect(result, &QToolButton::clicked, this, slot);
        bar->addWidget(result);
        return result;
    };
    firstButton_ = button(u"FirstPage"_s, u"|<"_s, [this] { goToPage(1); });
    previousButton_ = button(u"PreviousPage"_s, u"<"_s, [this] { goToPage(currentPage_ - 1); });
    pageNumber_ = new QLineEdit(bar);
    pageNumber_->setObjectName(u"PageNumber"_s);
    pageNumber_->setAlignment(Qt::AlignCenter);
    // Wide enough for "1234 / 1234": a year's report runs to hundreds of pages.
    const int pageBoxWidth = pageNumber_->fontMetrics().horizontalAdvance(u"0000 / 0000"_s) + 16;
    pageNumber_->setMinimumWidth(pageBoxWidth);
    pageNumber_->setMaximumWidth(pageBoxWidth);
    connect(pageNumber_, &QLineEdit::returnPressed, this, [this] { pageNumberEntered(); });
    bar->addWidget(pageNumber_);
    nextButton_ = button(u"NextPage"_s, u">"_s, [this] { goToPage(currentPage_ + 1); });
    lastButton_ = button(u"LastPage"_s, u">|"_s, [this] { goToPage(pageCount()); });

    zoomBox_ = new QComboBox(bar);
    zoomBox_->setObjectName(u"Zoom"_s);
    zoomBox_->addItem(u"Adatta alla larghezza"_s, ZoomPageWidth);
    zoomBox_->addItem(u"Pagina intera"_s, ZoomWholePage);
    for (const int percent : {50, 75, 100, 150, 200}) {
        zoomBox_->addItem(u"%1%"_s.arg(percent), percent);
    }
    connect(zoomBox_, &QComboBox::activated, this, [this](int index) {
        setZoom(zoomBox_->itemData(index).toInt());
        emit zoomChosen(zoom_);
    });
    bar->addWidget(zoomBox_);

    searchText_ = new QLineEdit(bar);
    searchText_->setObjectName(u"SearchText"_s);
    searchText_->setPlaceholderText(u"Testo da cercare"_s);
    connect(searchText_, &QLineEdit::returnPressed, this, [this] { find(searchText_->text()); });
    // Never narrower than its hint: a box cut to "Te…" says nothing.
    const int searchWidth =
        searchText_->fontMetrics().horizontalAdvance(searchText_->placeholderText()) + 24;
    searchText_->setMinimumWidth(searchWidth);
    searchText_->setMaximumWidth(std::max(180, searchWidth));
    bar->addWidget(searchText_);
    findButton_ = button(u"Find"_s, u"Trova"_s, [this] { find(searchText_->text()); });

    printButton_ = button(u"Print"_s, u"Stampa"_s, [this] { print(); });
    pdfButton_ = button(u"ExportPdf"_s, u"PDF"_s, [this] { exportTo(ExportFormat::Pdf); });
    wordButton_ = button(u"ExportWord"_s, u"Word"_s, [this] { exportTo(ExportFormat::Word); });
    excelButton_ = button(u"ExportExcel"_s, u"Excel"_s, [this] { exportTo(ExportFormat::Excel); });
    bar->addSeparator();
    closeButton_ = button(u"Close"_s, u"Chiudi"_s, [this] { emit closeRequested(); });
}

void ReportViewer::setReportSource(std::shared_ptr<Report> report) {
    report_ = std::move(report);
    updateControls();
}

void ReportViewer::ViewReport() {
    if (!report_) {
        setDocument(PageDocument());
        return;
    }
    setDocument(report_->Pages());
}

void ReportViewer::setDocument(PageDocument document) {
    document_ = std::move(document);
    currentPage_ = document_.pages.empty() ? 0 : 1;
    matchedText_.clear();
    matches_.clear();
    currentMatch_ = -1;
    setStatus(QString());
    fillGroupTree();
    updateScale();
    updateControls();
    emit pageChanged(currentPage_);
}

void ReportViewer::goToPage(int page) { showPage(page, false); }

void ReportViewer::showPage(int page, bool atBottom) {
    if (document_.pages.empty()) return;
    page = std::clamp(page, 1, pageCount());
    if (page == currentPage_) return;
    currentPage_ = page;
    wheelAngle_ = 0;
    updateScale();
    updateControls();
    QScrollBar* bar = scrollArea_->verticalScrollBar();
    bar->setValue(atBottom ? bar->maximum() : 0);
    emit pageChanged(currentPage_);
}

void ReportViewer::setZoom(int level) {
    zoom_ = level == ZoomPageWidth || level == ZoomWholePage ? level : std::clamp(level, 10, 400);
    const int index = zoomBox_->findData(zoom_);
    if (index >= 0) zoomBox_->setCurrentIndex(index);
    updateScale();
}

void ReportViewer::setDisplayGroupTree(bool display) {
    displayGroupTree_ = display;
    groupTree_->setVisible(display);
    updateScale();
}

bool ReportViewer::find(const QString& text) {
    if (!hasMatches(text)) return false;
    if (currentMatchShown()) {
        showMatch((currentMatch_ + 1) % int(matches_.size()));
        return true;
    }
    const auto first =
        std::find_if(matches_.begin(), matches_.end(),
                     [this](const TextMatch& match) { return match.page >= currentPage_; });
    showMatch(first == matches_.end() ? 0 : int(first - matches_.begin()));
    return true;
}

// Collects the places of `text` when it is not the text already searched;
// false, with the status line saying so, when there is none.
bool ReportViewer::hasMatches(const QString& text) {
    if (text.isEmpty() || document_.pages.empty()) return false;
    if (text.compare(matchedText_, Qt::CaseInsensitive) != 0) collectMatches(text);
    if (matches_.empty()) {
        setStatus(u"Testo \"%1\" non trovato."_s.arg(text));
        return false;
    }
    return true;
}

// The user may have turned to another page since: the search goes on from there.
bool ReportViewer::currentMatchShown() const {
    return currentMatch_ >= 0 && matches_[size_t(currentMatch_)].page == currentPage_;
}

bool ReportViewer::findNext() { return find(searchText_->text()); }

bool ReportViewer::findPrevious() {
    if (!hasMatches(searchText_->text())) return false;
    if (currentMatchShown()) {
        const int count = int(matches_.size());
        showMatch((currentMatch_ + count - 1) % count);
        return true;
    }
    const auto last =
        std::find_if(matches_.rbegin(), matches_.rend(),
                     [this](const TextMatch& match) { return match.page <= currentPage_; });
    showMatch(last == matches_.rend() ? int(matches_.size()) - 1 : int(matches_.rend() - last) - 1);
    return true;
}

void ReportViewer::collectMatches(const QString& text) {
    matchedText_ = text;
    matches_.clear();
    currentMatch_ = -1;
    for (int page = 1; page <= pageCount(); ++page) {
        for (const QRectF& place : placesOn(document_.pages[page - 1], text))
            matches_.push_back({page, place});
    }
    updateHighlights();
}

// The page of the place, scrolled so that the place shows.
void ReportViewer::showMatch(int index) {
    currentMatch_ = index;
    const TextMatch& match = matches_[size_t(index)];
    goToPage(match.page);
    updateHighlights();
    const QRectF onCanvas(match.rect.topLeft() * scale_, match.rect.size() * scale_);
    scrollArea_->ensureVisible(pageMarginPx + int(onCanvas.center().x()),
                               pageMarginPx + int(onCanvas.center().y()),
                               int(onCanvas.width() / 2) + 20, int(onCanvas.height() / 2) + 40);
    setStatus(u"\"%1\": %2 di %3, pagina %4"_s.arg(matchedText_)
                  .arg(index + 1)
                  .arg(matches_.size())
                  .arg(match.page));
}

void ReportViewer::updateHighlights() {
    std::vector<QRectF> places;
    QRectF current;
    for (size_t index = 0; index < matches_.size(); ++index) {
        if (matches_[index].page != currentPage_) continue;
        places.push_back(matches_[index].rect);
        if (int(index) == currentMatch_) current = matches_[index].rect;
    }
    canvas_->setHighlights(std::move(places), current);
}

QString ReportViewer::statusText() const { return status_->text(); }

void ReportViewer::print() {
    if (document_.pages.empty()) return;
    const PageDocument& document = document_;
    platform::showErrorAndLeave([&] {
        if (printHandler()) {
            printHandler()(this, document);
        } else {
            printWithDialog(this, document);
        }
    });
}

void ReportViewer::exportTo(int formatType) {
    if (!report_) return;
    QString suggestedName = report_->Title().isEmpty() ? document_.title : report_->Title();
    suggestedName.replace(u'/', u'-');
    const QString folder = exportFolder_ ? exportFolder_(formatType) : QString();
    SaveFileRequest request;
    if (formatType == ExportFormat::Word) {
        request = {u"Esporta in Word"_s, u"Documenti Word (*.doc)"_s, u"doc"_s, suggestedName,
                   folder};
    } else if (formatType == ExportFormat::Excel) {
        request = {u"Esporta in Excel"_s, u"Cartelle di Excel (*.xls)"_s, u"xls"_s, suggestedName,
                   folder};
    } else {
        request = {u"Esporta in PDF"_s, u"Documenti PDF (*.pdf)"_s, u"pdf"_s, suggestedName,
                   folder};
    }
    const QString path =
        fileChooser() ? fileChooser()(this, request) : chooseWithDialog(this, request);
    if (path.isEmpty()) return;
    const bool written = platform::showErrorAndLeave([&] {
        ExportOptions& options = report_->GetExportOptions();
        options.DestinationType = ExportDestination::Disk;
        options.FormatType = formatType;
        options.DiskFileName = path;
        report_->Export(false);
    });
    if (written) setStatus(u"Esportato in %1"_s.arg(path));
}

void ReportViewer::setPrintHandler(PrintHandler handler) { printHandler() = std::move(handler); }

void ReportViewer::setFileChooser(FileChooser chooser) { fileChooser() = std::move(chooser); }

bool ReportViewer::eventFilter(QObject* watched, QEvent* event) {
    if (watched == scrollArea_ && event->type() == QEvent::Resize) updateScale();
    if (watched == scrollArea_ && event->type() == QEvent::KeyPress &&
        pageKey(static_cast<QKeyEvent*>(event)->key()))
        return true;
    if (watched == scrollArea_->viewport() && event->type() == QEvent::Wheel &&
        wheelTurnsPage(*static_cast<QWheelEvent*>(event)))
        return true;
    return QWidget::eventFilter(watched, event);
}

void ReportViewer::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F3) {
        if (event->modifiers() & Qt::ShiftModifier) {
            findPrevious();
        } else {
            findNext();
        }
    } else if (event->key() == Qt::Key_Escape) {
        emit closeRequested();
    } else if (!pageKey(event->key())) {
        QWidget::keyPressEvent(event);
    }
}

// PgDn scrolls down the page and, at its bottom, turns to the next one; PgUp
// likewise upwards, to the bottom of the page before.
bool ReportViewer::pageKey(int key) {
    QScrollBar* bar = scrollArea_->verticalScrollBar();
    switch (key) {
        case Qt::Key_PageDown:
            if (bar->value() < bar->maximum()) {
                bar->setValue(bar->value() + bar->pageStep());
            } else {
                showPage(currentPage_ + 1, false);
            }
            return true;
        case Qt::Key_PageUp:
            if (bar->value() > bar->minimum()) {
                bar->setValue(bar->value() - bar->pageStep());
            } else {
                showPage(currentPage_ - 1, true);
            }
            return true;
        case Qt::Key_Home:
            goToPage(1);
            return true;
        case Qt::Key_End:
            goToPage(pageCount());
            return true;
        default:
            return false;
    }
}

// The wheel scrolls the page; turned on at its bottom (top) by a notch, it
// goes to the next page (the bottom of the one before).
bool ReportViewer::wheelTurnsPage(const QWheelEvent& event) {
    if (event.modifiers() != Qt::NoModifier) return false;
    const int angle = event.angleDelta().y();
    QScrollBar* bar = scrollArea_->verticalScrollBar();
    const bool down = angle < 0;
    if (angle == 0 || (down && bar->value() < bar->maximum()) ||
        (!down && bar->value() > bar->minimum())) {
        wheelAngle_ = 0;
        return false;
    }
    wheelAngle_ += angle;
    if (std::abs(wheelAngle_) < 120) return true;
    wheelAngle_ = 0;
    showPage(currentPage_ + (down ? 1 : -1), !down);
    return true;
}

void ReportViewer::fillGroupTree() {
    groupTree_->clear();
    // The open item of each level above the next entry.
    std::vector<QTreeWidgetItem*> open;
    for (const OutlineEntry& entry : document_.outline) {
        open.resize(std::min<size_t>(open.size(), size_t(std::max(entry.level, 0))));
        auto* item =
            open.empty() ? new QTreeWidgetItem(groupTree_) : new QTreeWidgetItem(open.back());
        item->setText(0, entry.text);
        item->setData(0, Qt::UserRole, entry.page + 1);
        open.push_back(item);
    }
    groupTree_->expandAll();
}

// The scale of the page widths fitted to the view leaves room for a vertical
// scroll bar whether one shows or not, so that its coming and going never
// changes the scale it depends on.
void ReportViewer::updateScale() {
    const Page* page = document_.pages.empty() ? nullptr : &document_.pages[currentPage_ - 1];
    const QSizeF size = page ? page->size : a4Points;
    const int frame = 2 * scrollArea_->frameWidth() + 2 * pageMarginPx;
    const double width = std::max(
        1, scrollArea_->width() - frame - scrollArea_->verticalScrollBar()->sizeHint().width());
    const double height = std::max(
        1, scrollArea_->height() - frame - scrollArea_->horizontalScrollBar()->sizeHint().height());
    if (zoom_ == ZoomPageWidth) {
        scale_ = width / size.width();
    } else if (zoom_ == ZoomWholePage) {
        scale_ = std::min(width / size.width(), height / size.height());
    } else {
        scale_ = zoom_ / 100.0 * logicalDpiX() / 72.0;
    }
    canvas_->show(page, scale_);
    updateHighlights();
}

void ReportViewer::updateControls() {
    const bool pages = !document_.pages.empty();
    pageNumber_->setText(u"%1 / %2"_s.arg(currentPage_).arg(pageCount()));
    firstButton_->setEnabled(currentPage_ > 1);
    previousButton_->setEnabled(currentPage_ > 1);
    nextButton_->setEnabled(currentPage_ < pageCount());
    lastButton_->setEnabled(currentPage_ < pageCount());
    findButton_->setEnabled(pages);
    printButton_->setEnabled(pages);
    for (QToolButton* exportButton : {pdfButton_, wordButton_, excelButton_}) {
        exportButton->setEnabled(report_ != nullptr);
    }
}

void ReportViewer::pageNumberEntered() {
    bool number = false;
    const int page = pageNumber_->text().section(u'/', 0, 0).trimmed().toInt(&number);
    if (number) goToPage(page);
    updateControls();
}

void ReportViewer::groupClicked(QTreeWidgetItem* item) {
    if (item) goToPage(item->data(0, Qt::UserRole).toInt());
}

void ReportViewer::setStatus(const QString& text) { status_->setText(text); }

}  // namespace lorvane::engine
