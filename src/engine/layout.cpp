#include "engine/layout.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "engine/expression.h"
#include "platform/message_text.h"
#include "platform/runtime_error.h"

namespace lorvane::engine {

using namespace Qt::StringLiterals;

namespace {

class LayoutReader {
  public:
    explicit LayoutReader(QString path) : path_(std::move(path)) {}

    [[noreturn]] void fail(const QString& what) const {
        throw RuntimeError(u"Il layout di stampa '%1' non è valido: %2"_s.arg(path_, what));
    }

    double number(const QJsonObject& object, const char* key, double fallback) const {
        const QJsonValue value = object.value(QLatin1String(key));
        if (value.isUndefined()) return fallback;
        if (!value.isDouble()) fail(u"\"%1\" deve essere un numero"_s.arg(QLatin1String(key)));
        return value.toDouble();
    }

    QString text(const QJsonObject& object, const char* key,
                 const QString& fallback = QString()) const {
        const QJsonValue value = object.value(QLatin1String(key));
        if (value.isUndefined()) return fallback;
        if (!value.isString()) fail(u"\"%1\" deve essere un testo"_s.arg(QLatin1String(key)));
        return value.toString();
    }

    QSizeF pageSize(const QJsonObject& page) const {
        static const std::pair<const char*, QSizeF> named[] = {
            {"A4", {210, 297}}, {"A3", {297, 420}}, {"A5", {148, 210}}, {"Letter", {215.9, 279.4}}};
        const QJsonValue size = page.value(u"size"_s);
        QSizeF result(210, 297);
        if (size.isString()) {
            const auto found =
                std::find_if(std::begin(named), std::end(named), [&](const auto& entry) {
                    return size.toString().compare(QLatin1String(entry.first),
                                                   Qt::CaseInsensitive) == 0;
                });
            if (found == std::end(named))
                fail(u"formato di pagina sconosciuto \"%1\""_s.arg(size.toString()));
            result = found->second;
        } else if (size.isObject()) {
            result =
                QSizeF(number(size.toObject(), "width", 0), number(size.toObject(), "height", 0));
            if (result.width() <= 0 || result.height() <= 0)
                fail(u"dimensioni di pagina non valide"_s);
        }
        const QString orientation = text(page, "orientation", u"portrait"_s);
        if (orientation == u"landscape"_s) return result.transposed();
        if (orientation != u"portrait"_s)
            fail(u"orientamento \"%1\" sconosciuto"_s.arg(orientation));
        return result;
    }

    FontSpec font(const QJsonObject& item) const {
        FontSpec font;
        const QJsonObject spec = item.value(u"font"_s).toObject();
        font.family = text(spec, "family", font.family);
        font.sizePt = number(spec, "size", font.sizePt);
        font.bold = spec.value(u"bold"_s).toBool();
        font.italic = spec.value(u"italic"_s).toBool();
        return font;
    }

    // `where` names the item for messages: its band and its place in it.
    ItemSpec item(const QJsonObject& object, const QString& where) const {
        static const std::pair<const char*, ItemSpec::Kind> kinds[] = {
            {"text", ItemSpec::Kind::Text},       {"field", ItemSpec::Kind::Field},
            {"sum", ItemSpec::Kind::Sum},         {"count", ItemSpec::Kind::Count},
            {"special", ItemSpec::Kind::Special}, {"line", ItemSpec::Kind::Line},
            {"box", ItemSpec::Kind::Box},         {"image", ItemSpec::Kind::Image},
            {"barcode", ItemSpec::Kind::Barcode}, {"expr", ItemSpec::Kind::Expr}};
        const QString type = text(object, "type");
        const auto kind = std::find_if(std::begin(kinds), std::end(kinds), [&](const auto& entry) {
            return type == QLatin1String(entry.first);
        });
        if (kind == std::end(kinds)) fail(u"elemento di tipo \"%1\" sconosciuto"_s.arg(type));

        ItemSpec spec;
        spec.kind = kind->second;
        const double x = number(object, "x", 0), y = number(object, "y", 0);
        if (spec.kind == ItemSpec::Kind::Line) {
            spec.rectMm =
                QRectF(QPointF(x, y), QPointF(number(object, "x2", x), number(object, "y2", y)));
        } else {
            spec.rectMm = QRectF(x, y, number(object, "w", 0), number(object, "h", 0));
        }
        spec.text = text(object, spec.kind == ItemSpec::Kind::Special ? "value"
                                 : spec.kind == ItemSpec::Kind::Expr  ? "expr"
                                                                      : "text");
        spec.field = text(object, "field");
        spec.format = text(object, "format");
        spec.start = text(object, "start");
        if (!spec.start.isEmpty() && spec.kind != ItemSpec::Kind::Sum)
            fail(u"\"start\" vale solo per un elemento \"sum\""_s);
        const QString scope = text(object, "scope", u"group"_s);
        const bool pageScope = spec.kind == ItemSpec::Kind::Expr && scope == u"page"_s;
        if (scope != u"group"_s && scope != u"report"_s && !pageScope)
            fail(u"ambito \"%1\" sconosciuto"_s.arg(scope));
        spec.scope = scope == u"report"_s ? ItemSpec::Scope::Report
                     : pageScope          ? ItemSpec::Scope::Page
                                          : ItemSpec::Scope::Group;
        if (spec.kind == ItemSpec::Kind::Expr) spec.expression = expression(object, where);
        spec.font = font(object);
        const QString align = text(object, "align", u"left"_s);
        spec.align = align == u"right"_s    ? Align::Right
                     : align == u"center"_s ? Align::Center
                                            : Align::Left;
        spec.lineWidthPt = number(object, "width", spec.lineWidthPt);
        if (spec.kind == ItemSpec::Kind::Box)
            spec.lineWidthPt = number(object, "border", spec.lineWidthPt);
        if (object.contains(u"fill"_s)) spec.fill = QColor(text(object, "fill"));
        spec.imageFile = text(object, "file");
        spec.showText = object.value(u"showText"_s).toBool(true);
        spec.checkDigit = object.value(u"checkDigit"_s).toBool(false);
        const bool needsField = spec.kind == ItemSpec::Kind::Field ||
                                spec.kind == ItemSpec::Kind::Sum ||
                                spec.kind == ItemSpec::Kind::Barcode;
        if (needsField && spec.field.isEmpty())
            fail(u"un elemento \"%1\" senza \"field\""_s.arg(type));
        return spec;
    }

    std::shared_ptr<const Expression> expression(const QJsonObject& object,
                                                 const QString& where) const {
        const QString source = text(object, "expr");
        if (source.trimmed().isEmpty())
            fail(u"%1: un elemento \"expr\" senza \"expr\""_s.arg(where));
        try {
            return std::make_shared<const Expression>(Expression::parse(source));
        } catch (const ExpressionError& error) {
            fail(u"%1, espressione \"%2\", carattere %3: %4"_s.arg(where, source)
                     .arg(error.position)
                     .arg(error.what));
        }
    }

    // `label` names the band in messages ("detail", "groups[1].footer").
    BandSpec band(const QJsonObject& root, const char* key,
                  const QString& label = QString()) const {
        BandSpec band;
        const QJsonValue value = root.value(QLatin1String(key));
        if (value.isUndefined() || value.isNull()) return band;
        if (!value.isObject())
            fail(u"la sezione \"%1\" deve essere un oggetto"_s.arg(QLatin1String(key)));
        const QJsonObject object = value.toObject();
        band.heightMm = number(object, "height", 0);
        const QString name = label.isEmpty() ? QLatin1String(key) : label;
        for (const QJsonValue entry : object.value(u"items"_s).toArray()) {
            band.items.push_back(
                item(entry.toObject(),
                     u"sezione \"%1\", elemento %2"_s.arg(name).arg(band.items.size() + 1)));
        }
        return band;
    }

    // The work file is opened in the work folder by its name: a name that
    // climbs out of it or names a folder would open another file.
    static bool isPlainFileName(const QString& name) {
        if (name == u"."_s || name == u".."_s || name.trimmed().isEmpty()) return false;
        return std::none_of(name.begin(), name.end(), [](QChar c) {
            return c == u'/' || c == u'\\' || c == u':' || c.unicode() < 0x20;
        });
    }

    // How deep the document's objects and arrays go, read before the JSON
    // parser recurs into them; a layout needs about eight levels.
    void checkNesting(const QByteArray& bytes) const {
        int depth = 0;
        bool inString = false;
        for (qsizetype i = 0; i < bytes.size(); ++i) {
            const char c = bytes[i];
            if (inString) {
                if (c == '\\') {
                    ++i;
                } else if (c == '"') {
                    inString = false;
                }
            } else if (c == '"') {
                inString = true;
            } else if (c == '{' || c == '[') {
                if (++depth > MaxLayoutNesting) {
                    fail(u"annidamento troppo profondo (più di %1 livelli, carattere %2)"_s
                             .arg(MaxLayoutNesting)
                             .arg(i + 1));
                }
            } else if (c == '}' || c == ']') {
                --depth;
            }
        }
    }

    LayoutSpec read(const QByteArray& bytes, const QString& folder) const {
        checkNesting(bytes);
        QJsonParseError error{};
        const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
        if (error.error != QJsonParseError::NoError) {
            fail(u"%1 (carattere %2)"_s.arg(error.errorString()).arg(error.offset));
        }
        const QJsonObject root = document.object();
        if (root.value(u"lorvaneLayout"_s).toInt() != 1) fail(u"manca \"lorvaneLayout\": 1"_s);

        LayoutSpec layout;
        layout.folder = folder;
        layout.title = text(root, "title");
        const QJsonObject data = root.value(u"data"_s).toObject();
        layout.workFile = text(data, "workFile");
        layout.query = text(data, "query");
        if (layout.workFile.isEmpty() || layout.query.isEmpty())
            fail(u"\"data\" deve indicare workFile e query"_s);
        if (!isPlainFileName(layout.workFile)) {
            fail(
                u"\"workFile\" deve essere il nome di un file nella cartella di lavoro, "
                u"senza cartelle: \"%1\""_s.arg(platform::elided(layout.workFile, 80)));
        }
        const QJsonObject page = root.value(u"page"_s).toObject();
        layout.pageMm = pageSize(page);
        const QJsonArray margins = page.value(u"margins"_s).toArray();
        if (!margins.isEmpty()) {
            if (margins.size() != 4)
                fail(u"\"margins\" vuole quattro numeri: sinistro, alto, destro, basso"_s);
            layout.marginLeftMm = margins[0].toDouble();
            layout.marginTopMm = margins[1].toDouble();
            layout.marginRightMm = margins[2].toDouble();
            layout.marginBottomMm = margins[3].toDouble();
        }
        const QJsonObject labels = root.value(u"labels"_s).toObject();
        layout.labelColumns = int(number(labels, "columns", 1));
        layout.labelGapMm = number(labels, "gap", 0);
        if (layout.labelColumns < 1) fail(u"\"columns\" delle etichette deve essere almeno 1"_s);
        layout.sheet =
            readLabelSheet(labels, layout.pageMm, [this](const QString& what) { fail(what); });

        layout.reportHeader = band(root, "reportHeader");
        layout.pageHeader = band(root, "pageHeader");
        layout.detail = band(root, "detail");
        layout.pageFooter = band(root, "pageFooter");
        layout.reportFooter = band(root, "reportFooter");
        for (const QJsonValue entry : root.value(u"groups"_s).toArray()) {
            const QJsonObject object = entry.toObject();
            GroupSpec group;
            group.field = text(object, "field");
            if (group.field.isEmpty()) fail(u"un gruppo senza \"field\""_s);
            const QString label = u"groups[%1]."_s.arg(layout.groups.size() + 1);
            group.header = band(object, "header", label + u"header"_s);
            group.footer = band(object, "footer", label + u"footer"_s);
            group.repeatHeader = object.value(u"repeatHeader"_s).toBool();
            layout.groups.push_back(std::move(group));
        }
        const double usable = layout.pageMm.height() - layout.marginTopMm - layout.marginBottomMm -
                              layout.pageHeader.heightMm - layout.pageFooter.heightMm;
        if (layout.detail.heightMm > usable) fail(u"il dettaglio non entra in una pagina"_s);
        return layout;
    }

  private:
    QString path_;
};

}  // namespace

LayoutSpec loadLayout(const QString& path, const QString& folderForImages) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw RuntimeError(
            u"Impossibile aprire il layout di stampa '%1': %2"_s.arg(path, file.errorString()));
    }
    const QString folder =
        folderForImages.isEmpty() ? QFileInfo(path).absolutePath() : folderForImages;
    return LayoutReader(path).read(file.readAll(), folder);
}

}  // namespace lorvane::engine
