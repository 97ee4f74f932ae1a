// Exporting a report to a file under the host's folder, and the rule that
// names the file: the format's folder, the report code, a random number.
#pragma once

#include <QString>

#include "engine/report.h"

namespace lorvane::output {

// One of the three file formats: its folder below Percorso as the module
// spells it, its extension and the engine's format code.
struct ExportKind {
    const char* folder;
    const char* extension;
    int format;
};

inline constexpr ExportKind PdfExport{"export\\pdf\\", ".pdf", engine::ExportFormat::Pdf};
inline constexpr ExportKind WordExport{"export\\Doc\\", ".doc", engine::ExportFormat::Word};
inline constexpr ExportKind ExcelExport{"export\\Xls\\", ".xls", engine::ExportFormat::Excel};

// Makes Percorso + "export\" and Percorso + the format's folder, ignoring
// every failure (a folder that exists, or cannot be made).
void CreaCartelleEsportazione(const QString& percorso, const ExportKind& kind);

// Percorso, the format's folder, the report code, a random whole number from
// 0 to 999, the extension: "…export\pdf\StampaCassa482.pdf". Not checked
// against files already there.
QString NomeFileEsportazione(const QString& percorso, const ExportKind& kind,
                             const QString& codiceStampa);

// Write `report` to `nomeFile` (a Windows-form path is mapped): `titolo` as
// its title, the host's user as author, then the engine's export options.
void EsportaPdf(engine::Report& report, const QString& nomeFile, const QString& titolo);
void EsportaWord(engine::Report& report, const QString& nomeFile, const QString& titolo);
void EsportaExcel(engine::Report& report, const QString& nomeFile, const QString& titolo);

}  // namespace lorvane::output
