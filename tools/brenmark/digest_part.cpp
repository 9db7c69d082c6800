// Moves the digest of some timesteps through a file. Both ends are this program, at work at the same time: the file has no
// version, and isn't kept.

#include "brenmark/digest_part.h"

#include "brenmark/timestep_sizes.h"
#include "brenmark/units_text.h"

#include <QDataStream>
#include <QFile>
#include <QSaveFile>

#include <iostream>

namespace NBrenmark {

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

static void writeDigestPart(const QString& deck, quint32 first)
{
    SDigestPart part{first, SDeckDigest()};
    {
        CDeckReader reader(deck, eUpgradedModel, eExamined);
        const size_t saidOfOpening = reader.messages().size(); // that other timesteps aren't there
        const std::vector<double> sizes = timestepSizes(reader, deck);
        CDigestTaker taker(reader.format());
        for (quint32 number = first; number < reader.timestepCount(); ++number) {
            reader.timestep(number);
            taker.take(reader.deck(), reader.modelChanged(), sizes[number]);
        }
        part.digest = taker.taken({});
        if (reader.messages().size() > saidOfOpening || !part.digest.storing.masksAgree())
            throw CFailure(eExitSource, utf8(deck) + ": there is something to say of its timesteps", std::string());
    }
    const QString path = digestFileOfPart(deck, first);
    QSaveFile file(path);
    QDataStream stream(&file);
    if (file.open(QIODevice::WriteOnly)) {
        stream << part.first;
        writeAll(stream, part.digest.timesteps);
        writeAll(stream, part.digest.models);
        writeAll(stream, part.digest.storing.records());
        stream << endMark;
    }
    if (!file.isOpen() || stream.status() != QDataStream::Ok || !file.commit())
        throw CFailure(eExitTarget, utf8(path) + ": can't be written: " + utf8(file.errorString()), std::string());
}

QString digestFileOfPart(const QString& deck, quint32 first)
{
    return deck + QLatin1String(".digests") + QString::number(first);
}

void writeDigestParts(const QString& deck)
{
    for (quint32 first = 0; std::cin >> first;)
        writeDigestPart(deck, first);
}

SDigestPart readDigestPart(const QString& path)
{
    SDigestPart part;
    QFile file(path);
    quint32 end = 0;
    if (file.open(QIODevice::ReadOnly)) {
        QDataStream stream(&file);
        stream >> part.first;
        part.digest.timesteps = readAll<SDeckDigest::STimestep>(stream);
        part.digest.models = readAll<SDeckDigest::SModel>(stream);
        part.digest.storing.add(readAll<CStoringCheck::SRecord>(stream));
        stream >> end;
    }
    if (end != endMark)
        throw CFailure(eExitTarget, utf8(path) + ": isn't whole", std::string());
    return part;
}

} // namespace NBrenmark
