// The lorvane program: the reference host of the printing module and its
// command-line tools.
#include <QCoreApplication>
#include <QTextStream>

#include "host/cli_sql.h"

namespace {

constexpr char usage[] =
    "uso: lorvane COMANDO ...\n"
    "  sql DATABASE \"ISTRUZIONE\"   esegue un'istruzione SQL (dialetto Access) su un database\n";

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("lorvane"));
    QTextStream out(stdout);
    QTextStream err(stderr);
    const QStringList args = QCoreApplication::arguments().mid(1);
    if (args.isEmpty()) {
        out << usage;
        return 0;
    }
    if (args.front() == QLatin1String("sql"))
        return lorvane::host::runSqlCommand(args.mid(1), out, err);
    err << usage;
    return 2;
}
