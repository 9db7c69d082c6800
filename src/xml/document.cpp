// Drives documents: from their bytes to the roots, and back.
#include "xml/document.h"

#include "core/counted.h"
#include "core/log.h"
#include "core/memory_ceiling.h"
#include "core/messages.h"
#include "core/shortened.h"
#include "model/creator_data.h"
#include "results/timestep_data.h"
#include "xml/guarded_device.h"
#include "xml/serialisers.h"
#include "xml/without_form.h"

#include <QRegularExpression>
#include <QStringList>
#include <QXmlStreamReader>

namespace NBrenmark {

static constexpr int mostDepth = 64;
static const QLatin1String rootTag("simulation");

// ---------------------------------------------------------------- notes

namespace {

/// Says where something happened for the first few times, and counts the others.
class CXmlNotes
{
public:
    explicit CXmlNotes(EEffect effect, const char* noun) : effect(effect), noun(noun) {}
    ~CXmlNotes() = default;
    CXmlNotes(const CXmlNotes&) = delete;
    CXmlNotes& operator=(const CXmlNotes&) = delete;

    void note(SXmlPlace place, const std::string& text)
    {
        constexpr quint64 mostShown = 20;
        if (++count <= mostShown)
            report(effect, NLogTitle::xmlAnalysis,
                   "Line " + std::to_string(place.line) + ", column " + std::to_string(place.column) + ": " + text);
        else
            ++unshown;
    }
    void close()
    {
        report(effect, NLogTitle::xmlAnalysis, counted(static_cast<qint64>(unshown), noun) + " more of the kind.",
               unshown);
    }

private:
    EEffect effect;
    const char* noun;
    quint64 count = 0;
    quint64 unshown = 0;
};

// ---------------------------------------------------------------- reading

class CDocumentReader
{
public:
    explicit CDocumentReader(QIODevice& device) : guarded(device), xml(&guarded) { xml.setNamespaceProcessing(false); }

    /// Goes to the root. \throws caused_error
    CXmlAttributes root();
    /// Gives all elements to a root, that of the document being the current one.
    void run(CXmlSerialiser& target, const CXmlIoOptions& options);
    [[noreturn]] void fail(const std::string& what, ECause cause = eCauseSource) const;

private:
    QXmlStreamReader::TokenType next();
    CXmlAttributes element() const;
    void open(CXmlSerialiser& target, const CXmlIoOptions& options);

    CGuardedDevice guarded;
    QXmlStreamReader xml;
    QStringList path;
    CXmlNotes unknown{eNotCarried, "unknown element"};
    CXmlNotes unknownAttributes{eNotCarried, "unknown attribute"};
    CXmlNotes notNumbers{eDefaulted, "wrong number"};
};

void CDocumentReader::fail(const std::string& what, ECause cause) const
{
    throw caused_error(cause, messageText(eMessageXmlImportFailed).toStdString() + "\nLine " +
                                  std::to_string(xml.lineNumber()) + ", column " + std::to_string(xml.columnNumber()) +
                                  ": " + what);
}

QXmlStreamReader::TokenType CDocumentReader::next()
{
    const QXmlStreamReader::TokenType token = xml.readNext();
    guarded.tokenDone();
    if (token == QXmlStreamReader::DTD && !xml.entityDeclarations().isEmpty())
        fail("The document declares entities, which aren't read.");
    if (token != QXmlStreamReader::Invalid)
        return token;
    if (guarded.isBroken())
        throw device_error("The document can't be read: " + guarded.errorString().toStdString());
    if (guarded.isRefused())
        fail("A tag or text is too long, or has too many attributes.");
    fail(shortened(xml.errorString()));
}

CXmlAttributes CDocumentReader::element() const
{
    return CXmlAttributes(xml.qualifiedName().toString(), path.isEmpty() ? QString() : path.last(), xml.attributes(),
                          {xml.lineNumber(), xml.columnNumber()});
}

CXmlAttributes CDocumentReader::root()
{
    while (next() != QXmlStreamReader::StartElement)
        if (xml.atEnd())
            fail("The document is empty.");
    CXmlAttributes found = element();
    if (found.tag() != rootTag)
        fail("The root is \"" + shortened(found.tag()) + "\", and that of a deck is \"simulation\".",
             eCauseUnsupported);
    return found;
}

void CDocumentReader::open(CXmlSerialiser& target, const CXmlIoOptions& options)
{
    const CXmlAttributes found = element();
    if (!target.startDomElement(found.tag(), found, options))
        unknown.note(found.place(), "The element \"" + shortened(found.tag()) + "\" isn't known and is left out.");
    for (const QString& name : found.notNumbers())
        notNumbers.note(found.place(), "\"" + shortened(found.text(name)) + "\" isn't a number: \"" + shortened(name) +
                                           "\" of \"" + shortened(found.tag()) + "\" is read as 0.");
    for (const QString& name : found.unknown())
        unknownAttributes.note(found.place(), "The attribute \"" + shortened(name) + "\" of \"" +
                                                  shortened(found.tag()) + "\" isn't known and is left out.");
    path.append(found.tag());
    if (path.size() > mostDepth)
        fail("The elements are nested deeper than " + std::to_string(mostDepth) + '.');
}

void CDocumentReader::run(CXmlSerialiser& target, const CXmlIoOptions& options)
{
    open(target, options);
    for (QXmlStreamReader::TokenType token = next(); token != QXmlStreamReader::EndDocument; token = next()) {
        if (token == QXmlStreamReader::StartElement)
            open(target, options);
        if (token == QXmlStreamReader::EndElement) {
            target.endDomElement(path.last(), options);
            path.removeLast();
        }
    }
    unknown.close();
    unknownAttributes.close();
    notNumbers.close();
}

EXmlDocument kindOf(const CXmlAttributes& root) { return root.has("version") ? eXmlDefinition : eXmlTimestep; }

/// \throws caused_error  the text is no version, or that of a document too old
quint32 versionOf(const CXmlAttributes& root, const CDocumentReader& document)
{
    static const QRegularExpression pattern(QStringLiteral("^(\\d{1,4})\\.(\\d{1,3})\\.(\\d{1,3})$"));
    const QRegularExpressionMatch match = pattern.match(root.text("version"));
    if (!match.hasMatch())
        document.fail("\"" + shortened(root.text("version")) + "\" isn't a version.");
    const quint32 version =
        makeVersion(match.captured(1).toUInt(), match.captured(2).toUInt(), match.captured(3).toUInt());
    if (version < NDocumentVersion::oldest)
        throw caused_error(eCauseUnsupported, messageText(eMessageXmlTooOld).toStdString());
    return version;
}

} // namespace

EXmlDocument kindOfDocument(QIODevice& device) { return kindOf(CDocumentReader(device).root()); }

void readDefinition(QIODevice& device, CCreatorData& creator, CXmlIoOptions& options)
{
    CDocumentReader document(device);
    const CXmlAttributes root = document.root();
    if (kindOf(root) != eXmlDefinition)
        document.fail("The document is that of a timestep, or has no version.");
    options.version = versionOf(root, document);
    beginMemoryCount(eMemoryOfModel);
    creator.clear();
    document.run(*definitionRoot(creator), options);
    creator.particleTypes.settle(0, NLogTitle::xmlImport);
    creator.geometryGroups.settle();
    creator.settle(NLogTitle::xmlImport);
    reportNotHeld(creator);
    creator.geometryGroups.keepState();
    creator.modified = false;
}

/// The types of a definition, without a particle.
static void takeTypes(CParticleTypes& types, const CParticleTypes& defined)
{
    for (const std::unique_ptr<CParticleType>& type : defined.types)
        types.append().copyDefinition(*type);
}

void beginTimestep(CTimestepData& timestep)
{
    timestep.clear();
    timestep.creatorData.geometryGroups.restoreState();
    timestep.time = 0.0;
    timestep.elapsedTime = 0.0;
    timestep.runNumber = 0;
    timestep.date.clear();
    timestep.isFull = true;
    timestep.timestepMask = defaultTimestepMask;
    timestep.particleMask = defaultParticleMask;
    timestep.geometryMask = defaultGeometryMask;
    takeTypes(timestep.particleTypes, timestep.creatorData.particleTypes);
    timestep.simulationProperties.resetToInitialValues(1);
    timestep.rebuildAttributes();
}

void readTimestep(QIODevice& device, CTimestepData& timestep, CXmlIoOptions& options)
{
    CDocumentReader document(device);
    if (kindOf(document.root()) != eXmlTimestep)
        document.fail("The document is that of a definition.");
    beginMemoryCount(eMemoryOfTimestep);
    beginTimestep(timestep);
    document.run(*timestepRoot(timestep), options);
    timestep.settle(NLogTitle::xmlImport);
}

// ---------------------------------------------------------------- writing

template <class TData>
static void writeDocument(QIODevice& device, TData& data, CXmlIoOptions& options)
{
    CXmlOutput out(device);
    CXmlWriter writer(out, options);
    data.write(writer);
    out.close();
}

void writeDefinition(QIODevice& device, CCreatorData& creator, CXmlIoOptions& options)
{
    writeDocument(device, creator, options);
}

void writeTimestep(QIODevice& device, CTimestepData& timestep, CXmlIoOptions& options)
{
    writeDocument(device, timestep, options);
}

} // namespace NBrenmark
