#include "archivepage/site.h"

#include "archivepage/jsontext.h"
#include "view/webfile.h"

// A static library's resources are linked in by name, outside of every namespace.
static void LinkResources()
{
    Q_INIT_RESOURCE(archiveweb);
}

namespace archivepage {

namespace {

// In the order of their dependencies; the first ones are those of the page of a record.
constexpr const char* CommonScripts[] = {"texts", "elements", "address", "faultphases"};
constexpr const char* Scripts[] = {
    "archivetexts",
    "pieces",    // loads the entries
    "moments",   // days and months
    "filters",   // which entries
    "searching", // by words
    "order",     // of the list
    "filterbar",    "timeline",    "picture", "facts", "list", "detail",
    "charts", // of the statistics
    "statistics",   "archivemain",
};

QByteArray Script(const QByteArray& name)
{
    return view::ResourceText(QStringLiteral(":/archivepage/") + QString::fromLatin1(name) +
                              QStringLiteral(".js"));
}

// Scripts come from here and from the pieces beside the page; nothing else is loaded, from wherever.
QByteArray Policy(const std::vector<QByteArray>& scripts)
{
    return "default-src 'none'; style-src 'unsafe-inline'; img-src data:; base-uri 'none'; form-action "
           "'none'; "
           "script-src 'self'" +
           view::HashSources(scripts);
}

QByteArray Names(const QStringList& names)
{
    QByteArray json;
    for (const QString& name : names)
        json += (json.isEmpty() ? "" : ",") + JsonText(name);
    return "[" + json + "]";
}

} // namespace

void Site::Add(const PieceNames& names)
{
    QByteArray& list = names.isTimed ? timed : untimed;
    list += (list.isEmpty() ? "\n" : ",\n") + QByteArray("{\"count\":") + QByteArray::number(names.count) +
            ",\"entries\":" + JsonText(names.entries) + ",\"details\":" + JsonText(names.details) +
            ",\"words\":" + JsonText(names.words) + ",\"pictures\":" + Names(names.pictures) + "}";
}

QByteArray Site::Page() const
{
    LinkResources();
    std::vector<QByteArray> scripts;
    for (const char* name : CommonScripts)
        scripts.push_back(view::WebFile(QString::fromLatin1(name) + QStringLiteral(".js")));
    for (const char* name : Scripts)
        scripts.push_back(Script(name));
    const std::vector<QByteArray> frame =
        view::SplitAt(view::ResourceText(QStringLiteral(":/archivepage/archive.html")),
                      {"@POLICY@", "@TITLE@", "@STYLES@", "@BODY@"});
    QByteArray page =
        frame[0] + Policy(scripts) + frame[1] + settings.title.toHtmlEscaped().toUtf8() + frame[2];
    page += view::WebFile(QStringLiteral("base.css"));
    for (const char* name : {"archive", "statistics"})
        page += view::ResourceText(QStringLiteral(":/archivepage/%1.css").arg(QLatin1String(name)));
    page += frame[3] + "<script type=\"text/plain\" id=\"archive\">{\"title\":" + JsonText(settings.title) +
            ",\"date\":" + JsonText(settings.date.toString(Qt::ISODate)) + ",\"root\":" + JsonText(root) +
            ",\"pictures\":" + QByteArray::number(settings.pictures) + ",\"timed\":[" + timed +
            "],\"untimed\":[" + untimed + "]}</script>\n";
    for (const QByteArray& script : scripts)
        page += "<script>" + script + "</script>\n";
    return page + frame[4];
}

} // namespace archivepage
