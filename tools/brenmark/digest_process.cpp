// Moves digests through a file in memory. Both ends are this program, running at the same time: it has no version.
#include "brenmark/digest_process.h"

#include "brenmark/disk.h"
#include "brenmark/failure.h"
#include "brenmark/timestep_sizes.h"
#include "brenmark/units_text.h"

#include "core/memory_ceiling.h"
#include "core/thread_pool.h"

#include <QDataStream>
#include <QFile>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <iostream>
#include <sys/mman.h>
#include <unistd.h>
#include <utility>

namespace NBrenmark {

// ---------------------------------------------------------------- answers

static constexpr quint32 endMark = 0x656e6421;

static QDataStream& operator<<(QDataStream& stream, const std::string& text)
{
    return stream << QByteArray::fromStdString(text);
}

static QDataStream& operator>>(QDataStream& stream, std::string& text)
{
    QByteArray bytes;
    stream >> bytes;
    text = bytes.toStdString();
    return stream;
}

static QDataStream& operator<<(QDataStream& stream, const TextLines::value_type& line)
{
    return stream << line.first << line.second;
}

static QDataStream& operator>>(QDataStream& stream, TextLines::value_type& line)
{
    return stream >> line.first >> line.second;
}

static QDataStream& operator<<(QDataStream& stream, const STimestepFigures& f)
{
    return stream << f.time << f.particles << f.smallest << f.mean << f.largest << f.bytes << f.kinetic << f.potential;
}

static QDataStream& operator>>(QDataStream& stream, STimestepFigures& f)
{
    return stream >> f.time >> f.particles >> f.smallest >> f.mean >> f.largest >> f.bytes >> f.kinetic >> f.potential;
}

static QDataStream& operator<<(QDataStream& stream, const SDeckDigest::SModel& model)
{
    return stream << model.text << model.firstTimestep << model.values;
}

static QDataStream& operator>>(QDataStream& stream, SDeckDigest::SModel& model)
{
    return stream >> model.text >> model.firstTimestep >> model.values;
}

static QDataStream& operator<<(QDataStream& stream, const SDeckDigest::STimestep& timestep)
{
    return stream << timestep.time << timestep.text << quint64(timestep.model) << timestep.values << timestep.figures;
}

static QDataStream& operator>>(QDataStream& stream, SDeckDigest::STimestep& timestep)
{
    quint64 model = 0;
    stream >> timestep.time >> timestep.text >> model >> timestep.values >> timestep.figures;
    timestep.model = model;
    return stream;
}

static QDataStream& operator<<(QDataStream& stream, const CStoringCheck::SRecord& record)
{
    return stream << record.root << record.version << record.revision << record.branch;
}

static QDataStream& operator>>(QDataStream& stream, CStoringCheck::SRecord& record)
{
    return stream >> record.root >> record.version >> record.revision >> record.branch;
}

template <class T>
static void writeAll(QDataStream& stream, const std::vector<T>& elements)
{
    stream << static_cast<quint32>(elements.size());
    for (const T& element : elements)
        stream << element;
}

template <class T>
static std::vector<T> readAll(QDataStream& stream)
{
    quint32 count = 0;
    stream >> count;
    std::vector<T> elements;
    for (quint32 i = 0; i < count && stream.status() == QDataStream::Ok; ++i)
        stream >> elements.emplace_back();
    return elements;
}

static QByteArray bytesOf(const SDigestPart& part)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << part.first << quint32(part.digest.format);
    writeAll(stream, part.digest.timesteps);
    writeAll(stream, part.digest.models);
    writeAll(stream, part.digest.beside);
    writeAll(stream, part.digest.storing.records());
    const CStoringCheck::SHeader header = part.digest.storing.storedHeader();
    stream << header.firstVersion << header.lastVersion << header.edition << endMark;
    return bytes;
}

/// \param size  is set to the bytes of the part; \return nothing unless it is whole
static std::optional<SDigestPart> partOf(const QByteArray& bytes, qint64& size)
{
    QDataStream stream(bytes);
    SDigestPart part;
    quint32 format = 0, end = 0;
    CStoringCheck::SHeader header;
    stream >> part.first >> format;
    part.digest.format = static_cast<EDeckFormat>(format);
    part.digest.timesteps = readAll<SDeckDigest::STimestep>(stream);
    part.digest.models = readAll<SDeckDigest::SModel>(stream);
    part.digest.beside = readAll<TextLines::value_type>(stream);
    part.digest.storing.add(readAll<CStoringCheck::SRecord>(stream));
    stream >> header.firstVersion >> header.lastVersion >> header.edition >> end;
    part.digest.storing.setHeader(header);
    if (stream.status() != QDataStream::Ok || end != endMark)
        return std::nullopt;
    size = stream.device()->pos();
    return part;
}

// ---------------------------------------------------------------- this process

CDigestProcess::CDigestProcess(QString deck) : deck(std::move(deck)) {}

CDigestProcess::~CDigestProcess()
{
    processes.signal(SIGKILL);
    while (processes.count() > 0)
        processes.wait(1000);
    for (const int file : {input, output})
        if (file >= 0)
            ::close(file);
}

bool CDigestProcess::isPossible() { return threadCount() > 1 && !isMemoryCeilingSet(); }

/// This process has more to do, and its last group keeps one thread busy: it goes first, the other one beside it.
static constexpr int niceness = 3;

bool CDigestProcess::startProcess()
{
    int ends[2] = {-1, -1};
    output = memfd_create("digests", MFD_CLOEXEC);
    if (output < 0 || fcntl(output, F_SETFL, O_APPEND) != 0 || ::pipe2(ends, O_CLOEXEC) != 0)
        return false;
    input = ends[1];
    try {
        processes.start({"verify", "--parts", "--threads", std::to_string(threadCount()), "--", nativePath(deck)},
                        ends[0], output, niceness);
    }
    catch (const CFailure&) { // no process is to be had
    }
    ::close(ends[0]);
    return processes.count() > 0;
}

bool CDigestProcess::ask(const std::string& line)
{
    processes.wait(0); // one that has ended takes no request
    isAwaited = (input >= 0 ? processes.count() > 0 : startProcess()) &&
                ::write(input, line.data(), line.size()) == static_cast<ssize_t>(line.size());
    return isAwaited;
}

static const char* const allRequest = "all";

bool CDigestProcess::askForTimesteps(quint32 first) { return ask(std::to_string(first) + '\n'); }

bool CDigestProcess::askForAll() { return ask(std::string(allRequest) + '\n'); }

std::optional<SDigestPart> CDigestProcess::answer()
{
    processes.wait(0);
    const off_t end = isAwaited ? lseek(output, 0, SEEK_END) : 0;
    if (end <= taken)
        return std::nullopt;
    QByteArray bytes(static_cast<int>(end - taken), Qt::Uninitialized);
    if (pread(output, bytes.data(), static_cast<size_t>(bytes.size()), taken) != bytes.size())
        return std::nullopt;
    qint64 size = 0;
    std::optional<SDigestPart> part = partOf(bytes, size);
    taken += size;
    isAwaited = !part;
    return part;
}

std::optional<SDigestPart> CDigestProcess::lastAnswer()
{
    if (input >= 0)
        ::close(std::exchange(input, -1));
    while (processes.count() > 0)
        processes.wait(1000);
    return answer();
}

// ---------------------------------------------------------------- the other process

static SDigestPart digestOfTimesteps(const QString& deck, quint32 first, bool isAll)
{
    SDigestPart part{first, SDeckDigest()};
    CDeckReader reader(deck, eUpgradedModel, eExamined);
    const size_t saidOfOpening = isAll ? 0 : reader.messages().size(); // that other timesteps aren't there
    const std::vector<double> sizes = timestepSizes(reader, deck);
    CDigestTaker taker(reader.format());
    for (quint32 number = first; number < reader.timestepCount(); ++number) {
        reader.timestep(number);
        taker.take(reader.deck(), reader.modelChanged(), sizes[number]);
    }
    if (isAll)
        taker.takeBeside(reader.deck());
    part.digest = taker.taken({});
    if (reader.messages().size() > saidOfOpening || !part.digest.storing.masksAgree() ||
        (isAll && part.digest.format != eFormatHdf5))
        throw CFailure(eExitSource, utf8(deck) + ": there is something to say of it", std::string());
    return part;
}

void answerDigestRequests(const QString& deck)
{
    for (std::string request; std::getline(std::cin, request);) {
        const bool isAll = request == allRequest;
        const QByteArray bytes =
            bytesOf(digestOfTimesteps(deck, isAll ? 0 : QString::fromStdString(request).toUInt(), isAll));
        if (::write(STDOUT_FILENO, bytes.constData(), static_cast<size_t>(bytes.size())) != bytes.size())
            throw CFailure(eExitTarget, "the digest can't be handed over: " + std::string(std::strerror(errno)),
                           std::string());
    }
}

} // namespace NBrenmark
