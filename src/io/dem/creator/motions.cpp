// The motions of geometry groups. Those of conveyors have no place in this family.
#include "core/log.h"
#include "core/shortened.h"
#include "io/dem/dem_reader.h"
#include "io/dem/dem_writer.h"
#include "model/kinematics/kinematics.h"
#include "model/kinematics/linear_rotation.h"
#include "model/kinematics/linear_translation.h"
#include "model/kinematics/sinusoidal_rotation.h"
#include "model/kinematics/sinusoidal_translation.h"

namespace NBrenmark {

static constexpr qint64 leastMotionBytes = 4; // the word of its kind: an unknown kind has no data

// ---------------------------------------------------------------- parts that motions share

template <class TForm, class TAction>
static void actionForm(TForm&& f, TAction& action)
{
    f.text(action.name);
    f.f64(action.startTime); // s
    f.f64(action.endTime);   // s
}
void CDemCreatorDataReader::readTimeDepAction(CTimeDepAction& action) { actionForm(in(), action); }
void CDemCreatorDataWriter::writeTimeDepAction(const CTimeDepAction& action) { actionForm(out(), action); }

template <class TForm, class TRotation>
static void rotationForm(TForm&& f, TRotation& rotation)
{
    f.point(rotation.pointOfAction); // m
    f.flag(rotation.movesWithBody);  // else the axis stays in space
}
void CDemCreatorDataReader::readRotation(CRotation& rotation) { rotationForm(in(), rotation); }
void CDemCreatorDataWriter::writeRotation(const CRotation& rotation) { rotationForm(out(), rotation); }

template <class TForm, class TSinusoid>
static void sinusoidForm(TForm&& f, TSinusoid& sinusoid)
{
    f.point(sinusoid.displacement); // m or rad; amplitude and direction
    f.f64(sinusoid.offset);         // rad, the phase
    f.f64(sinusoid.frequency);      // Hz
}
void CDemCreatorDataReader::readSinusoid(CSinusoid& sinusoid) { sinusoidForm(in(), sinusoid); }
void CDemCreatorDataWriter::writeSinusoid(const CSinusoid& sinusoid) { sinusoidForm(out(), sinusoid); }

/// No axis is stored: it is that of the displacement, from the origin.
template <class TMotion>
static void axisFromDisplacement(TMotion& motion)
{
    motion.axis.startPoint = C3DPoint();
    motion.axis.endPoint = C3DPoint(motion.sinusoid.displacement.normalised());
    motion.displacementMagnitude = motion.sinusoid.displacement.length();
}

// ---------------------------------------------------------------- motions

template <class TForm, class TMotion>
static void linearTranslationForm(TForm&& f, TMotion& motion)
{
    actionForm(f, motion);
    f.f64(motion.initialVelocity);   // m/s, along the axis
    f.f64(motion.acceleration);      // m/s^2
    f.point(motion.axis.startPoint); // m
    f.point(motion.axis.endPoint);   // m
}
void CDemCreatorDataReader::readLinearTranslation(CLinearTranslation& motion)
{
    linearTranslationForm(in(), motion);
    motion.axisChanged();
}
void CDemCreatorDataWriter::writeLinearTranslation(const CLinearTranslation& motion)
{
    linearTranslationForm(out(), motion);
}

template <class TForm, class TMotion>
static void linearRotationForm(TForm&& f, TMotion& motion)
{
    actionForm(f, motion);
    rotationForm(f, motion);
    f.point(motion.axis.startPoint);            // m
    f.point(motion.axis.endPoint);              // m
    f.f64(motion.initialAngularVelocity);       // rad/s, about the axis
    f.f64(motion.angularAccelerationMagnitude); // rad/s^2
}
void CDemCreatorDataReader::readLinearRotation(CLinearRotation& motion)
{
    linearRotationForm(in(), motion);
    motion.axisChanged();
}
void CDemCreatorDataWriter::writeLinearRotation(const CLinearRotation& motion) { linearRotationForm(out(), motion); }

template <class TForm, class TMotion>
static void sinusoidalTranslationForm(TForm&& f, TMotion& motion)
{
    actionForm(f, motion);
    sinusoidForm(f, motion.sinusoid);
}
void CDemCreatorDataReader::readSinusoidalTranslation(CSinusoidalTranslation& motion)
{
    sinusoidalTranslationForm(in(), motion);
    axisFromDisplacement(motion);
}
void CDemCreatorDataWriter::writeSinusoidalTranslation(const CSinusoidalTranslation& motion)
{
    sinusoidalTranslationForm(out(), motion);
}

template <class TForm, class TMotion>
static void sinusoidalRotationForm(TForm&& f, TMotion& motion)
{
    actionForm(f, motion);
    rotationForm(f, motion);
    sinusoidForm(f, motion.sinusoid);
}
void CDemCreatorDataReader::readSinusoidalRotation(CSinusoidalRotation& motion)
{
    sinusoidalRotationForm(in(), motion);
    axisFromDisplacement(motion);
}
void CDemCreatorDataWriter::writeSinusoidalRotation(const CSinusoidalRotation& motion)
{
    sinusoidalRotationForm(out(), motion);
}

// ---------------------------------------------------------------- the list

/// The kinds that this family knows.
static bool isStoredMotion(const QString& word)
{
    for (const char* known :
         {CLinearTranslation::word, CSinusoidalTranslation::word, CLinearRotation::word, CSinusoidalRotation::word})
        if (word == QLatin1String(known))
            return true;
    return false;
}

/// A motion of that kind with its data. A word that isn't known has none.
static void readMotion(CDemCreatorDataReader& reader, const QString& word, CKinematics& kinematics)
{
    if (!isStoredMotion(word)) {
        report(eLost, NLogTitle::legacyRead, "motion of the unknown kind \"" + shortened(word) + "\" skipped");
        return;
    }
    std::unique_ptr<CTimeDepAction> motion = createMotion(word);
    motion->read(reader);
    kinematics.add(std::move(motion));
}

/// A list of one motion at most; it has had a word of its kind since 2.4.40.
static void readOneMotion(CDemCreatorDataReader& reader, CInForm& f, const char* kind, CKinematics& kinematics)
{
    bool isThere = false;
    f.flag(isThere);
    if (!isThere)
        return;
    QString word;
    f.text(word, from(2, 4, 40), QString::fromLatin1(kind));
    readMotion(reader, word, kinematics);
}

void CDemCreatorDataReader::readKinematics(CKinematics& kinematics)
{
    CInForm f = in();
    kinematics.clear();
    if (!f.stores(gateMotionList)) {
        readOneMotion(*this, f, CSinusoidalRotation::word, kinematics);
        readOneMotion(*this, f, CSinusoidalTranslation::word, kinematics);
    }
    const quint32 count = f.count("motion", leastMotionBytes);
    for (quint32 i = 0; i < count; ++i) {
        QString word;
        f.text(word);
        readMotion(*this, word, kinematics);
    }
    kinematics.sortByStartTime();
    kinematics.recomputeTimes();
}

void CDemCreatorDataWriter::writeKinematics(const CKinematics& kinematics)
{
    COutForm f = out();
    std::vector<const CTimeDepAction*> stored;
    for (const auto& motion : kinematics.actions) {
        if (isStoredMotion(motion->displayName()))
            stored.push_back(motion.get());
        else
            report(eNotCarried, NLogTitle::legacyWrite,
                   "motion \"" + shortened(motion->name) + "\" of the kind " + motion->displayName().toStdString() +
                       " dropped: this family can't hold it",
                   1, shortened(motion->name));
    }
    f.length("motion", leastMotionBytes, stored);
    for (const CTimeDepAction* motion : stored) {
        f.text(motion->displayName());
        motion->write(*this);
    }
}

} // namespace NBrenmark
