#pragma once
// What several contact laws share: the geometry of a contact, elastic constants, springs, damping, friction. Pure functions,
// in SI units. They follow the order of their formulas operation by operation, so that a result is the same to the last bit
// wherever it is computed.
//
// Sources: K. L. Johnson, Contact Mechanics (1985), for elastic contact; R. D. Mindlin (1949) for the tangential
// stiffness; Y. Tsuji, T. Tanaka, T. Ishida (1992) for damping by the coefficient of restitution.

#include "physics/contact.h"

namespace NBrenmark::NContactMechanics {

constexpr double pi = 3.141592653589793;
constexpr double rootOfFiveSixths = 0.9128709291752769;

/// Whether a squared length or a divisor counts as zero.
constexpr bool isZero(double number) { return number >= -zeroLength && number <= zeroLength; }
inline bool isZero(const C3DVector& vector) { return isZero(vector.squaredLength()); }

/// The vector over a number. One that counts as zero gives 9e30 in each component.
C3DVector divided(const C3DVector& vector, double divisor);
/// The vector at length 1. One that counts as zero remains as it is.
C3DVector unit(const C3DVector& vector);

/// How the two sides lie and move.
struct SFrame
{
    explicit SFrame(const SContact& contact);
    /// Takes the velocities of the contact afresh.
    void takeVelocities(const SContact& contact);
    /// Whether vn points along n: as the first side comes nearer to the second.
    bool loads() const { return normalVelocity.dot(normal) > 0.0; }
    /// A force of damping along n, that acts against vn.
    C3DVector damping(double magnitude) const { return loads() ? -(magnitude * normal) : magnitude * normal; }

    C3DVector normal;             ///< n, from the centre of the first side to the point of contact
    C3DVector velocity;           ///< v, of the first side relative to the second, m/s
    C3DVector normalVelocity;     ///< vn = (v.n) n
    C3DVector tangentialVelocity; ///< vt = v - vn
    double radius = 0.0;          ///< R* = R1 R2 / (R1 + R2), m
    double mass = 0.0;            ///< m* = m1 m2 / (m1 + m2), kg
};

/// E* = 2 G1 G2 / ((1 - nu1) G2 + (1 - nu2) G1), Pa
double equivalentYoungsModulus(const SContact& contact);
/// G* = G1 G2 / ((2 - nu1) G2 + (2 - nu2) G1), Pa
double equivalentShearModulus(const SContact& contact);

/// beta = -ln e / sqrt(ln^2 e + pi^2); 0 for e of 0 or below
double dampingRatio(double restitution);
/// sqrt(4 m* k / ((pi / ln e)^2 + 1)): the coefficient that gives a linear spring of stiffness k the restitution e, kg/s
double springDamping(double mass, double stiffness, double restitution, double circleConstant = pi);

/// Sn = 2 E* sqrt(R*) sqrt(overlap), N/m
double normalStiffness(double youngsModulus, double radius, double overlap);
/// St = 8 G* sqrt(R*) sqrt(overlap), N/m
double tangentialStiffness(double shearModulus, double radius, double overlap);
/// 2 kappa beta sqrt(S m*), with kappa the root of 5/6, kg/s
double hertzDamping(double ratio, double stiffness, double mass);
/// (4/3) E* sqrt(R*) overlap^1.5, the force between elastic spheres, N
double hertzForce(double youngsModulus, double radius, double overlap);

/// The parts of a contact's forces without damping.
struct SSprings
{
    C3DVector normal;
    C3DVector tangential; ///< zero where it slides
};

/// The elastic contact of Hertz and Mindlin. Fills normal and tangential force with their parts of damping, and cuts the
/// tangential overlap back where friction is exceeded. The overlap must be above 0.
SSprings applyHertzMindlin(SContact& contact, const SFrame& frame);
/// The tangential part: a spring of stiffness `stiffness`, whose force slides at friction times the load.
/// \return the force of the spring; zero where it slides
C3DVector applyTangentialSpring(SContact& contact, const SFrame& frame, double stiffness, double damping,
                                double squaredLoad);

/// Whether rolling friction acts on the second side.
enum ERollingSides
{
    eFirstSide,
    eBothSides
};
/// T = -(omega / |omega|) load |r| mu_r on each side that turns, with r from its centre of mass to the point of contact.
void applyRollingFriction(SContact& contact, double load, ERollingSides sides);
/// The torque on one side; nothing, and false, on one that doesn't turn.
bool rollingTorque(const SContactElement& element, double arm, double load, double friction, C3DVector& torque);
/// |r|, m
double armOf(const SContactElement& element, const SContact& contact);

} // namespace NBrenmark::NContactMechanics
