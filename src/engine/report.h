// The engine's objects as the module drives them: an Application that opens a
// layout file, and the Report it gives, which reads its own data source when
// it renders and writes itself to a file on Export.
#pragma once

#include <QString>
#include <memory>

#include "engine/layout.h"
#include "engine/page_document.h"

namespace lorvane::engine {

namespace ExportFormat {
inline constexpr int Pdf = 31;
inline constexpr int Word = 14;
inline constexpr int Excel = 36;
}  // namespace ExportFormat

namespace ExportDestination {
inline constexpr int Disk = 1;
}  // namespace ExportDestination

struct ExportOptions {
    int DestinationType = 0;
    QString DiskFileName;
    int FormatType = 0;
    // Excel only: a first row of column headings above the report's rows.
    bool ExcelColumnHeadings = false;
    // Numbers and dates keep the layout's display formats in the file.
    bool KeepDisplayFormats = false;
};

class Report {
  public:
    explicit Report(LayoutSpec layout);

    const QString& Title() const { return title_; }
    void SetTitle(const QString& title);
    const QString& Author() const { return author_; }
    void SetAuthor(const QString& author);

    // Pages rendered once are kept for the next output; off, every output
    // reads the work file again.
    bool KeepRenderedPages() const { return keepRenderedPages_; }
    void SetKeepRenderedPages(bool keep);
    // Title and author go into the properties of the files written.
    bool WriteDocumentProperties() const { return writeDocumentProperties_; }
    void SetWriteDocumentProperties(bool write) { writeDocumentProperties_ = write; }

    ExportOptions& GetExportOptions() { return exportOptions_; }

    // Writes the report as the export options say. `promptUser` must be
    // false: the engine asks nothing. Throws RuntimeError with the engine's
    // words when the options are incomplete or the file cannot be written.
    void Export(bool promptUser);

    // The rendered pages (reading the work file when there are none kept).
    const PageDocument& Pages();
    const LayoutSpec& Layout() const { return layout_; }

  private:
    LayoutSpec layout_;
    QString title_;
    QString author_;
    bool keepRenderedPages_ = true;
    bool writeDocumentProperties_ = false;
    ExportOptions exportOptions_;
    std::unique_ptr<PageDocument> pages_;
};

using ReportPtr = std::shared_ptr<Report>;

class Application {
  public:
    static constexpr int OpenThroughCopy = 1;

    // Opens a layout file. With OpenThroughCopy the file is read from a
    // temporary copy, so the layout can be replaced while a report is open.
    // Throws RuntimeError naming the file when it is missing or not a layout.
    ReportPtr OpenReport(const QString& path, int openMethod = OpenThroughCopy);
};

}  // namespace lorvane::engine
