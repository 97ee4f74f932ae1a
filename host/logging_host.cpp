#include "host/logging_host.h"

#include <QFileDevice>

namespace lorvane::host {

using namespace Qt::StringLiterals;

QString onOneLine(QString text) {
    text.replace(u"\r\n"_s, u" "_s);
    text.replace(u'\r', u' ');
    text.replace(u'\n', u' ');
    return text;
}

LoggingHost::LoggingHost(entry::HostPtr inner, std::unique_ptr<QIODevice> log)
    : inner_(std::move(inner)), log_(std::move(log)) {}

void LoggingHost::write(const char* member, std::initializer_list<QString> arguments) {
    QString line = QLatin1String(member) + u'\t';
    bool first = true;
    for (const QString& argument : arguments) {
        if (!std::exchange(first, false)) line += u'\t';
        line += onOneLine(argument);
    }
    line += u'\n';
    log_->write(line.toUtf8());
    if (auto* file = qobject_cast<QFileDevice*>(log_.get())) file->flush();
}

bool LoggingHost::ChiudiFinestre() {
    write("ChiudiFinestre");
    return inner_->ChiudiFinestre();
}

void LoggingHost::Execute(const QString& sql) {
    write("Execute", {sql});
    inner_->Execute(sql);
}

QString LoggingHost::LeggiSettaggio(const QString& sezione, const QString& chiave,
                                    const QString& predefinito) {
    write("LeggiSettaggio", {sezione, chiave, predefinito});
    return inner_->LeggiSettaggio(sezione, chiave, predefinito);
}

QString LoggingHost::NomeDitta() {
    write("NomeDitta");
    return inner_->NomeDitta();
}

db::RecordsetPtr LoggingHost::OpenRecordset(const QString& sql) {
    write("OpenRecordset", {sql});
    return inner_->OpenRecordset(sql);
}

db::RecordsetPtr LoggingHost::OpenRecordSetMenu(const QString& sql) {
    write("OpenRecordSetMenu", {sql});
    return inner_->OpenRecordSetMenu(sql);
}

db::RecordsetPtr LoggingHost::OpenRecordSetPersonalizzazioni(const QString& sql) {
    write("OpenRecordSetPersonalizzazioni", {sql});
    return inner_->OpenRecordSetPersonalizzazioni(sql);
}

db::RecordsetPtr LoggingHost::OpenRecordSetPreferenze(const QString& sql) {
    write("OpenRecordSetPreferenze", {sql});
    return inner_->OpenRecordSetPreferenze(sql);
}

QString LoggingHost::Percorso() {
    write("Percorso");
    return inner_->Percorso();
}

bool LoggingHost::Personalizzazione() {
    write("Personalizzazione");
    return inner_->Personalizzazione();
}

void LoggingHost::SalvaSettaggio(const QString& sezione, const QString& chiave, QString& valore) {
    write("SalvaSettaggio", {sezione, chiave, valore});
    inner_->SalvaSettaggio(sezione, chiave, valore);
}

QString LoggingHost::User() {
    write("User");
    return inner_->User();
}

}  // namespace lorvane::host
