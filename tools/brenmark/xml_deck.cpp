#include "brenmark/xml_deck.h"

#include "brenmark/terminal.h"

#include "core/memory_ceiling.h"
#include "core/messages.h"
#include "core/plain_file.h"

namespace NBrenmark {

CFailure failureOfDocument(const std::exception& error, const QString& path)
{
    const std::string text = utf8(path) + ": " + textOf(error);
    switch (causeOf(error, eCauseSource)) {
    case eCauseUnsupported: return CFailure(eExitUnsupported, text, "Nothing was made.", eCauseUnsupported);
    case eCauseTarget: return CFailure(eExitTarget, text, adviceForWriting(text), eCauseTarget);
    case eCauseMemory:
        return CFailure(eExitTarget, text, "Nothing was made. Free some memory, or give a greater --max-memory.",
                        eCauseMemory);
    default: return CFailure(eExitSource, text, "Nothing was made. Correct the document, and repeat this command.");
    }
}

bool isDocument(const QString& path)
{
    QFile file(path);
    if (!openPlainFile(file).empty())
        return false;
    QByteArray begin = file.read(64);
    for (const char* const mark : {"\xEF\xBB\xBF", "\xFF\xFE", "\xFE\xFF"})
        if (begin.startsWith(mark))
            begin.remove(0, static_cast<int>(qstrlen(mark)));
    begin.replace('\0', "");
    return begin.trimmed().startsWith('<');
}

COpenDocument::COpenDocument(const QString& path) : path(path), file(path)
{
    if (const std::string cause = openPlainFile(file); !cause.empty())
        throw CFailure(eExitSource, messageText(eMessageXmlNotOpened).arg(path).toStdString() + ": " + cause,
                       "Check the path and the file's permissions.");
}

EXmlDocument kindOfDocument(const QString& path)
{
    COpenDocument document(path);
    try {
        return kindOfDocument(document.file);
    }
    catch (const std::exception& error) {
        throw failureOfDocument(error, path);
    }
}

CXmlDeck::CXmlDeck(const QString& definition, const QString& timestep)
{
    COpenDocument model(definition);
    std::optional<COpenDocument> state;
    qint64 bytes = model.file.size();
    if (!timestep.isEmpty())
        bytes += state.emplace(timestep).file.size();
    beginDeckMemory(static_cast<quint64>(bytes));
    clearLogOnceMemory();
    QString at = definition;
    try {
        readDefinition(model.file, frame().creator, simulation().xmlOptions);
        beginTimestep(frame().timestep);
        if (state) {
            at = timestep;
            readTimestep(state->file, frame().timestep, simulation().xmlOptions);
        }
    }
    catch (const std::exception& error) {
        throw failureOfDocument(error, at);
    }
}

} // namespace NBrenmark
