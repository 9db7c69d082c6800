#pragma once
// The classes of queries, and how a file's word becomes one.

#include "analysis/query.h"

#include <QStringList>

namespace NBrenmark {

/// What a class of queries has for itself alone: a copy of its own kind. Nothing is calculated here.
template <class TQuery, class TBase = CQuery>
class CQueryKind : public TBase
{
public:
    using TBase::TBase;

    std::unique_ptr<CQuery> clone() const override
    {
        return std::make_unique<TQuery>(static_cast<const TQuery&>(*this));
    }
    bool calculate(std::vector<double>&) const override { return false; }
    QString header() const override { return this->name() + QLatin1Char(' ') + this->primaryAttribute; }
};

class CNormalQuery : public CQueryKind<CNormalQuery>
{
public:
    QString name() const override { return QStringLiteral("Standard"); }
};

class CTotalQuery : public CQueryKind<CTotalQuery>
{
public:
    explicit CTotalQuery(bool overTime = false) : overTime(overTime) {}

    QString name() const override { return overTime ? QStringLiteral("Total Over Time") : QStringLiteral("Total"); }
    void form(IEntryForm& f) override;

    bool overTime;
    bool useIdCounter = false;

protected:
    void keys(CQueryKeys& keys) override;
};

class CCoGQuery : public CQueryKind<CCoGQuery>
{
public:
    QString name() const override { return QStringLiteral("CoG"); }
};

class CAverageQuery : public CQueryKind<CAverageQuery>
{
public:
    QString name() const override { return QStringLiteral("Average"); }
};

class CMaximumQuery : public CQueryKind<CMaximumQuery>
{
public:
    QString name() const override { return QStringLiteral("Maximum"); }
};

class CMinimumQuery : public CQueryKind<CMinimumQuery>
{
public:
    QString name() const override { return QStringLiteral("Minimum"); }
};

class CMaxMinQuery : public CQueryKind<CMaxMinQuery>
{
public:
    QString name() const override { return QStringLiteral("Maximum & Minimum"); }
};

class CDistributionQuery : public CQueryKind<CDistributionQuery>
{
public:
    explicit CDistributionQuery(bool ofContacts = false) : ofContacts(ofContacts) {}

    QString name() const override { return QStringLiteral("Distribution"); }
    void form(IEntryForm& f) override;

    bool ofContacts;
    qint32 intervals = 0;

protected:
    void keys(CQueryKeys& keys) override;
};

class CContactFrequency : public CQueryKind<CContactFrequency, CDistributionQuery>
{
public:
    CContactFrequency() : CQueryKind(true) {}

    QString name() const override { return QStringLiteral("Contact Distribution"); }

    bool autoRange = false; ///< is in the key form alone

protected:
    void keys(CQueryKeys& keys) override;
};

class CTimeDistributionQuery : public CQueryKind<CTimeDistributionQuery>
{
public:
    QString name() const override { return QStringLiteral("Time Distribution"); }
    void form(IEntryForm& f) override;

    qint32 intervals = 0;
    double startTime = 0.0; ///< s
    double endTime = 0.0;   ///< s
    QString queryType;      ///< of the query that is asked again and again

protected:
    void keys(CQueryKeys& keys) override;
};

class CTwoAttribQuery : public CQueryKind<CTwoAttribQuery>
{
public:
    QString name() const override { return QStringLiteral("Two Attribute"); }
    void form(IEntryForm& f) override;

    QString queryType1;
    QString queryType2;
    QString objectType;

protected:
    void keys(CQueryKeys& keys) override;
};

class CMassFlowQuery : public CQueryKind<CMassFlowQuery>
{
public:
    QString name() const override { return QStringLiteral("Mass Flow Rate"); }
    void form(IEntryForm& f) override;

    QString displayQueryType;

protected:
    void keys(CQueryKeys& keys) override;
};

class CPressurePerSelectionQuery : public CQueryKind<CPressurePerSelectionQuery>
{
public:
    QString name() const override { return QStringLiteral("Total Pressure"); }
};

class CDensityQuery : public CQueryKind<CDensityQuery>
{
public:
    QString name() const override { return QStringLiteral("Density"); }
    void form(IEntryForm& f) override;

    qint32 densityKind = 0; ///< carried
};

/// The words by which files name the classes.
QStringList queryIdentifiers();

/// A query by the word of its class; null for a word that names none.
/// \param flag  1 makes a query about contacts
std::unique_ptr<CQuery> createQuery(const QString& identifier, int flag);

} // namespace NBrenmark
