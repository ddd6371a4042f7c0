// The page as one file: a frame with the styles, scripts and data in it.
#include "output/outputfile.h"
#include "text/texts.h"
#include "view/base64.h"
#include "view/overlay.h"
#include "view/pagedata.h"
#include "view/shown.h"
#include "view/view.h"
#include "view/webfile.h"

#include <QFileInfo>

namespace view {

namespace {

// In the order of their dependencies.
constexpr const char* Scripts[] = {
    "dygraph", // the library
    "texts",   // what the page says
    "pagetexts",
    "elements",    // of HTML and SVG
    "address",     // settings in the page's address
    "axis",        // time over samples
    "channels",    // samples
    "windowfit",   // weights of filters
    "fourier",     // filters: phasors, RMS values, harmonics
    "periods",     // the period before a cursor
    "quantities",  // of three phases, from their phasors
    "power",       // phasors of a period
    "derived",     // what follows from them, at a sample
    "frequency",   // along the record
    "deriving",    // the same for all that is derived
    "worker",      // what runs beside the page
    "derivations", // its requests
    "formula",     // of calculated channels
    "formulatime",   "formulaunits", "formulanames", "formulatexts",   "reportmethod",
    "frame",         "strips",       "tracks",
    "fault", // where the page opens
    "marks", // onset, trip, clearing
    "snap",  // what cursors snap to
    "cursors",       "reasons",      "phasors",      "calculated",     "formulapanel",
    "derivedstrips", // against time, under the circuits' own strips
    "secondtexts",   // another record over the first
    "secondmatch",   "secondpanel",  "second",       "copy",           "tables",
    "report",        "navigator",
    "cursorbar", // the cursors on sheets without strips
    "answertexts",   "faultphases",  "faultdiagram", "operatingchart", "answertables",
    "answerfacts",   "eventtable",   "answer",       "planetexts",     "planeview",
    "planeloci",     "planedrawing", "planevalues",  "planepointer", // the R-X plane
    "plane",
    "spectrumlines", // over one period or several
    "spectrumchart", "spectrum",     "values",       "main",
};

constexpr const char* Styles[] = {"dygraph", "base",   "style", "marks",    "cursorbar", "formulas",
                                  "copy",    "answer", "plane", "spectrum", "values",    "second"};

QByteArray Script(const char* name)
{
    return WebFile(QString::fromLatin1(name) + QStringLiteral(".js"));
}

// No scripts but these run in the page, whatever stands in the record, and nothing is loaded.
QByteArray Policy(const std::vector<QByteArray>& texts)
{
    const QByteArray policy =
        "default-src 'none'; style-src 'unsafe-inline'; img-src data:; base-uri 'none'; "
        "form-action 'none'; worker-src blob:; script-src";
    return policy + HashSources(texts);
}

// Writes the page piece by piece, as the samples are most of it.
class PageWriter
{
public:
    explicit PageWriter(const QString& path_) : path(path_), file(path)
    {
        if (!file.Open())
            Fail();
    }

    void Write(const QByteArray& bytes)
    {
        if (!file.Write(bytes))
            Fail();
    }

    void Data(const QByteArray& id, const QByteArray& content)
    {
        Write("<script type=\"text/plain\" id=\"" + id + "\">");
        Write(content);
        Write("</script>\n");
    }

    void Commit()
    {
        if (!file.Commit())
            Fail();
    }

private:
    [[noreturn]] void Fail()
    {
        throw Error(Tr("view", "'%1' cannot be written: %2").arg(path, file.ErrorText()));
    }

    const QString path;
    output::OutputFile file;
};

QByteArray Title(const analysis::Oscillogram& oscillogram)
{
    const QString text = oscillogram.config.station + QStringLiteral(" — ") + oscillogram.config.device;
    return text.toHtmlEscaped().toUtf8();
}

QByteArray Encoded(const analysis::Codes& codes)
{
    return codes.IsWide() ? Base64(codes.Wide()) : Base64(codes.Small());
}

// A record that goes into the page.
struct Content
{
    const analysis::Oscillogram& oscillogram;
    QByteArray data;
    QByteArray mark; // in the names of its elements
};

void WriteContent(PageWriter& page, const Content& content)
{
    page.Data(content.mark + "data", content.data);
    const std::vector<analysis::Codes>& analog = content.oscillogram.analog;
    for (size_t i = 0; i < analog.size(); ++i)
        page.Data(content.mark + "samples" + QByteArray::number(static_cast<int>(i)), Encoded(analog[i]));
}

void WriteScripts(PageWriter& page, const std::vector<QByteArray>& texts)
{
    for (size_t i = 0; i < texts.size(); ++i) { // by these names the page finds what its worker needs
        page.Write(QByteArray("<script id=\"script-") + Scripts[i] + "\">");
        page.Write(texts[i]);
        page.Write("</script>\n");
    }
}

// The first one gives the page its title.
void WriteFile(const QString& pagePath, const std::vector<Content>& contents)
{
    std::vector<QByteArray> texts;
    for (const char* name : Scripts)
        texts.push_back(Script(name));
    const std::vector<QByteArray> frame =
        SplitAt(WebFile(QStringLiteral("page.html")), {"@POLICY@", "@TITLE@", "@STYLES@", "@BODY@"});
    PageWriter page(pagePath);
    page.Write(frame[0] + Policy(texts) + frame[1] + Title(contents.front().oscillogram) + frame[2]);
    for (const char* name : Styles)
        page.Write(WebFile(QString::fromLatin1(name) + QStringLiteral(".css")));
    page.Write(frame[3]);
    for (const Content& content : contents)
        WriteContent(page, content);
    WriteScripts(page, texts);
    page.Write(frame[4]);
    page.Commit();
}

QString SourceOf(const QString& recordPath, const Options& options)
{
    return options.source.isEmpty() ? QFileInfo(recordPath).fileName() : options.source;
}

} // namespace

Held WritePage(const QString& recordPath, const QString& pagePath, const Options& options)
{
    const analysis::Oscillogram oscillogram = Load(recordPath, options);
    const analysis::Summary summary = SummaryOf(recordPath, oscillogram, options);
    WriteFile(pagePath, {{oscillogram, PageData(oscillogram, summary, SourceOf(recordPath, options)), ""}});
    return Holding(oscillogram);
}

HeldBoth WritePage(const QString& recordPath, const Second& second, const QString& pagePath,
                   const Options& options)
{
    const auto [first, other] = LoadBoth(recordPath, second, options);
    Options ofSecond = second.options;
    ofSecond.window = options.window;
    const Overlay overlay(first, other, second.alignment);
    const QByteArray data =
        PageData(first, SummaryOf(recordPath, first, options), SourceOf(recordPath, options));
    const QByteArray otherData =
        PageData(other, SummaryOf(second.recordPath, other, ofSecond), SourceOf(second.recordPath, ofSecond),
                 OverlayJson(overlay, first, other));
    WriteFile(pagePath, {{first, data, ""}, {other, otherData, "second-"}});
    return {Holding(first), Holding(other), overlay.IsApart()};
}

} // namespace view
