#pragma once
// The classes of queries, and how a file's word becomes one.

#include "analysis/query.h"
#include "units/quantity.h"

#include <QStringList>

#include <utility>
#include <vector>

namespace NBrenmark {

/// A copy of its own kind.
template <class TQuery, class TBase = CQuery>
class CQueryKind : public TBase
{
public:
    using TBase::TBase;

    std::unique_ptr<CQuery> clone() const override
    {
        return std::make_unique<TQuery>(static_cast<const TQuery&>(*this));
    }
};

class CNormalQuery : public CQueryKind<CNormalQuery>
{
public:
    QString name() const override { return QStringLiteral("Standard"); }
    bool calculate(std::vector<double>& result) const override;
};

class CTotalQuery : public CQueryKind<CTotalQuery>
{
public:
    explicit CTotalQuery(bool overTime = false) : overTime(overTime) {}

    QString name() const override { return overTime ? QStringLiteral("Total Over Time") : QStringLiteral("Total"); }
    bool calculate(std::vector<double>& result) const override;
    bool isOverTime() const override { return overTime; }
    std::optional<quint32> ownQuantity() const override;
    void collect(const SQueryValues& values) override;
    void form(IEntryForm& f) override;

    bool overTime;
    bool useIdCounter = false; ///< counts the rows in place of their values

protected:
    void keys(CQueryKeys& keys) override;

private:
    std::vector<double> total; ///< of the timesteps so far, or of the last one
};

class CCoGQuery : public CQueryKind<CCoGQuery>
{
public:
    QString name() const override { return QStringLiteral("CoG"); }
    bool calculate(std::vector<double>& result) const override;
    const char* obstacle() const override;
    quint32 needs() const override { return CQuery::needs() | eNeedsMass | eNeedsPosition; }
    QString ownAttribute() const override { return QStringLiteral("Mass"); }
    std::optional<quint32> ownQuantity() const override { return eLengthQuantity; }
    QString header() const override { return name(); }
};

class CAverageQuery : public CQueryKind<CAverageQuery>
{
public:
    QString name() const override { return QStringLiteral("Average"); }
    bool calculate(std::vector<double>& result) const override;
};

class CMaximumQuery : public CQueryKind<CMaximumQuery>
{
public:
    QString name() const override { return QStringLiteral("Maximum"); }
    bool calculate(std::vector<double>& result) const override;
};

class CMinimumQuery : public CQueryKind<CMinimumQuery>
{
public:
    QString name() const override { return QStringLiteral("Minimum"); }
    bool calculate(std::vector<double>& result) const override;
};

class CMaxMinQuery : public CQueryKind<CMaxMinQuery>
{
public:
    QString name() const override { return QStringLiteral("Maximum & Minimum"); }
    bool calculate(std::vector<double>& result) const override;
};

class CDistributionQuery : public CQueryKind<CDistributionQuery>
{
public:
    explicit CDistributionQuery(bool ofContacts = false) : ofContacts(ofContacts) {}

    QString name() const override { return QStringLiteral("Distribution"); }
    bool calculate(std::vector<double>& result) const override;
    std::optional<quint32> ownQuantity() const override { return eNoQuantity; }
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

    bool autoRange = false; ///< between the extremes, whatever the range; is in the key form alone

protected:
    bool isRanged() const override { return useRange && !autoRange; }
    void keys(CQueryKeys& keys) override;
};

class CTimeDistributionQuery : public CQueryKind<CTimeDistributionQuery>
{
public:
    QString name() const override { return QStringLiteral("Time Distribution"); }
    bool calculate(std::vector<double>& result) const override;
    bool isOverTime() const override { return true; }
    void collect(const SQueryValues& values) override;
    void form(IEntryForm& f) override;

    qint32 intervals = 0;
    double startTime = 0.0; ///< s
    double endTime = 0.0;   ///< s
    QString queryType;      ///< of the query that is asked again and again

protected:
    void keys(CQueryKeys& keys) override;

private:
    std::vector<std::pair<double, double>> answers; ///< time, s, and answer of each timestep
};

class CTwoAttribQuery : public CQueryKind<CTwoAttribQuery>
{
public:
    QString name() const override { return QStringLiteral("Two Attribute"); }
    bool calculate(std::vector<double>& result) const override;
    quint32 needs() const override { return eNeedsSecondary; }
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
    /// Through its region, along the axis; which way and how far that goes is known by the axis alone.
    bool calculate(std::vector<double>& result) const override;
    const char* obstacle() const override;
    quint32 needs() const override { return CQuery::needs() | eNeedsMass | eNeedsVelocity; }
    QString ownAttribute() const override { return QStringLiteral("Mass"); }
    std::optional<quint32> ownQuantity() const override { return eMassFlowQuantity; }
    QString header() const override { return name(); }
    void form(IEntryForm& f) override;

    QString displayQueryType; ///< carried: how a display sums up the answers

protected:
    void keys(CQueryKeys& keys) override;
};

class CPressurePerSelectionQuery : public CQueryKind<CPressurePerSelectionQuery>
{
public:
    QString name() const override { return QStringLiteral("Total Pressure"); }
    bool calculate(std::vector<double>& result) const override;
    quint32 needs() const override { return CQuery::needs() | eNeedsPressure; }
    QString ownAttribute() const override { return QStringLiteral("Compressive Force"); }
    std::optional<quint32> ownQuantity() const override { return ePressureQuantity; }
    QString header() const override { return name(); }
};

class CDensityQuery : public CQueryKind<CDensityQuery>
{
public:
    QString name() const override { return QStringLiteral("Density"); }
    bool calculate(std::vector<double>& result) const override;
    const char* obstacle() const override;
    quint32 needs() const override { return CQuery::needs() | eNeedsMass | eNeedsVolume; }
    QString ownAttribute() const override { return QStringLiteral("Mass"); }
    std::optional<quint32> ownQuantity() const override { return eDensityQuantity; }
    QString header() const override { return name(); }
    void form(IEntryForm& f) override;

    qint32 densityKind = 0; ///< 0 for that of the bulk; what others are isn't known
};

/// The words by which files name the classes.
QStringList queryIdentifiers();

/// A query by the word of its class; null for a word that names none.
/// \param flag  1 makes a query about contacts
std::unique_ptr<CQuery> createQuery(const QString& identifier, int flag);

} // namespace NBrenmark
