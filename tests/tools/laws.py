#!/usr/bin/env python3
"""Holds every contact law against a second implementation, in Python floats, over random states and the edges between
branches: the same to the last bit, but for a few units where a logarithm, a power or a root of the library stands between.

Usage: laws.py BRENMARK
"""
import json
import math
import random
import subprocess
import sys

PI = 3.141592653589793
VECTORS = ["normalForce", "normalDamping", "tangentialForce", "tangentialDamping", "torque1", "rollingTorque1", "torque2",
           "rollingTorque2"]


def dot(a, b): return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]
def size(a): return math.sqrt(dot(a, a))
def plus(*vectors): return [((vectors[0][i] + vectors[1][i]) + (vectors[2][i] if len(vectors) > 2 else 0.0)) for i in range(3)]
def minus(a, b): return [x - y for x, y in zip(a, b)]
def times(a, *factors):
    for factor in factors:
        a = [x * factor for x in a]
    return a
def over(a, d): return [9e30] * 3 if abs(d) <= 1e-25 else [x / d for x in a]
def unit(a): return a if abs(dot(a, a)) <= 1e-25 else over(a, size(a))
def cross(a, b): return [a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]]
def power(x, y):
    try:
        return math.pow(x, y)
    except (ValueError, ZeroDivisionError):
        return math.nan if x < 0 or math.isnan(x) else math.inf
def root(x): return math.sqrt(x) if x >= 0 else math.nan


class Contact:
    """A state with the symbols of its laws, and the results that they change."""

    def __init__(self, state):
        self.s = state
        self.a, self.b = state["element1"], state["element2"]
        self.d, self.c, self.dt = state["normalOverlap"], state["contactPoint"], state["timeStep"]
        self.o, self.v1, self.v2 = state["tangentialOverlap"], state["velocity1"], state["velocity2"]
        self.r = {name: [0.0] * 3 for name in VECTORS}
        self.changes = {"element1": {}, "element2": {}, "contact": {}}
        self.r1, self.r2 = self.a["physicalRadius"], self.b["physicalRadius"]
        self.radius = self.r1 * self.r2 / (self.r1 + self.r2)
        self.mass = self.a["mass"] * self.b["mass"] / (self.a["mass"] + self.b["mass"])
        self.n = unit(minus(self.c, self.a["position"]))
        self.move()
        m1, m2 = state["material1"], state["material2"]
        g1, g2, n1, n2 = m1["shearModulus"], m2["shearModulus"], m1["poissonsRatio"], m2["poissonsRatio"]
        self.young = 2 * g1 * g2 / ((1 - n1) * g2 + (1 - n2) * g1)
        self.shear = g1 * g2 / ((2 - n1) * g2 + (2 - n2) * g1)
        self.prime = 1 / ((1 - n1 * n1) / ((2 * n1 + 2) * g1) + (1 - n2 * n2) / ((2 * n2 + 2) * g2))
        i = state["interaction"]
        self.e, self.mus, self.mur = i["restitution"], i["staticFriction"], i["rollingFriction"]
        log = math.log(self.e) if self.e > 0 else 0
        self.beta = -log / math.sqrt(log * log + PI * PI) if self.e > 0 else 0.0
        self.geometry = self.b["kind"] == 1
        self.rolling2 = state["modelType"] == 0
        self.pair = (state["parameters"]["pairs"] or [{}])[0]

    def move(self):
        self.v = minus(self.v1, self.v2)
        self.vn = times(self.n, dot(self.v, self.n))
        self.vt = minus(self.v, self.vn)
        self.loads = dot(self.vn, self.n) > 0

    def against(self, magnitude): return times(self.n, -magnitude if self.loads else magnitude)
    def spring_damping(self, k, pi=PI): return math.sqrt(4 * self.mass * k / ((pi / math.log(self.e)) ** 2 + 1)) if self.e != 1 else 0.0
    def value(self, item, name): return item.get(name, [0.0])[0]
    def add(self, where, name, change, element=0, elements=1):
        self.changes[where].setdefault(name, [0.0] * elements)[element] += change

    def roll(self, load, sides):
        for side, e in ((1, self.a), (2, self.b))[:sides]:
            w = e["angularVelocity"]
            if abs(dot(w, w)) > 1e-25:
                arm = size(minus(self.c, e["centreOfMass"]))
                self.r[f"torque{side}"] = self.r[f"rollingTorque{side}"] = times(unit(w), -1.0, load, arm, self.mur)

    def slide(self, stiffness, damping, squared):
        ft = times(self.o, -stiffness)
        limit = self.mus * self.mus * squared
        if dot(ft, ft) > limit:
            self.r["tangentialForce"] = self.r["tangentialDamping"] = times(ft, math.sqrt(limit / dot(ft, ft)))
            self.o = times(over(self.r["tangentialForce"], stiffness), -1.0)
            return [0.0] * 3
        self.r["tangentialDamping"] = times(self.vt, -damping)
        self.r["tangentialForce"] = plus(ft, self.r["tangentialDamping"])
        return ft

    def hertz(self, roll=None):
        sn = 2 * self.young * math.sqrt(self.radius) * math.sqrt(self.d)
        st = 8 * self.shear * math.sqrt(self.radius) * math.sqrt(self.d)
        kappa = 2 * 0.9128709291752769 * self.beta
        fs = times(self.n, -(4 / 3 * self.young * math.sqrt(self.radius) * self.d * math.sqrt(self.d)))
        self.r["normalDamping"] = self.against(kappa * math.sqrt(sn * self.mass) * size(self.vn))
        self.r["normalForce"] = plus(fs, self.r["normalDamping"])
        ft = self.slide(st, kappa * math.sqrt(st * self.mass), dot(fs, fs))
        if roll is not None:
            self.roll(size(self.r["normalForce"]), roll)
        return fs, ft


def sides(c): return 2 if c.rolling2 else 1


def hertz_mindlin(c):
    if c.d > 0:
        c.hertz(sides(c))


def rvd(c):
    if c.d <= 0:
        return
    c.hertz()
    w1, w2 = c.a["angularVelocity"], c.b["angularVelocity"]
    w, rho = (times(w1, c.r1), c.r1) if c.geometry else (times(plus(w1, w2), c.r1 + c.r2, 0.5), c.radius)
    t = times(unit(cross(c.n, cross(c.n, w))), size(c.r["normalForce"]) * c.mur * rho)
    for side, e in ((1, c.a), (2, c.b))[:1 if c.geometry else 2]:
        arm = size(minus(c.c, e["centreOfMass"]))
        c.r[f"torque{side}"] = c.r[f"rollingTorque{side}"] = over(times(t, arm), e["contactRadius"])


def linear_spring(c):
    if c.d <= 0:
        return
    a = math.sqrt(c.radius) * c.prime
    k = power(0.9375 * c.mass * c.s["parameters"]["characteristicVelocity"] ** 2 / a, 0.2) * a * 1.0666666666666667
    damping = c.spring_damping(k) if c.e > 0 else 0.0
    fs = times(c.n, -k * c.d)
    c.r["normalDamping"] = c.against(damping * size(c.vn))
    c.r["normalForce"] = plus(fs, c.r["normalDamping"])
    ft = times(c.o, -k)
    limit = c.mus * size(fs)
    if size(ft) > limit:
        c.r["tangentialForce"] = over(times(ft, limit), size(ft))
        c.o = times(over(c.r["tangentialForce"], k), -1.0)
    elif any(abs(x) > 1e-40 for x in ft):
        c.r["tangentialForce"] = minus(ft, times(over(ft, size(ft)), damping, size(c.vt)))
    c.roll(size(c.r["normalForce"]), sides(c))


def heat(c):
    if c.d <= 0:
        return
    c.hertz(2)
    k = c.s["parameters"]["conductivities"]
    k1, k2 = k.get(c.a["name"], 0.0), k.get(c.b["name"], 0.0)
    if c.geometry or k1 + k2 == 0:
        return
    a = power(size(c.r["normalForce"]) * (0.75 / c.young) * c.radius, 0.3333)
    q = a * 4 * k1 * k2 / (k1 + k2) * (c.b["properties"]["Temperature"][0] - c.a["properties"]["Temperature"][0])
    c.add("element1", "Heat Flux", q, 0, 2)
    c.add("element2", "Heat Flux", -q, 0, 2)


def archard(c):
    if c.d <= 0 or not c.geometry:  # between particles no one has the property
        return
    c.hertz(sides(c))
    wear = c.s["parameters"]["wearConstants"]
    if c.b["name"] in wear:
        c.add("element2", "Archard Wear",
              size(c.r["normalDamping"]) * size(c.vt) * wear[c.b["name"]] * c.dt / c.b["area"])


def relative_wear(c):
    c.r = {name: c.s["results"].get(name, [0.0] * 3) for name in VECTORS}
    if c.d <= 0 or not c.geometry:
        return
    fn, ft = size(c.r["normalForce"]), size(c.r["tangentialForce"])
    u, p = (-size(c.vn) if c.loads else size(c.vn)), c.value(c.s["contactProperties"], "Previous Normal Velocity")
    if u < 0:
        c.add("element2", "Normal Cumulative Contact Energy", size(c.vn) * fn * c.dt)
    c.add("element2", "Tangential Cumulative Contact Energy", size(c.vt) * ft * c.dt)
    if p < 0 < u:
        c.add("element2", "Normal Cumulative Force", fn)
    c.add("element2", "Tangential Cumulative Force", ft)
    c.add("contact", "Previous Normal Velocity", u - p)


def cohesion(c):
    if c.d > 0 and c.pair:
        c.r["normalForce"] = times(c.n, c.pair["energyDensity"] * PI * c.d * 2 * c.r1)


def cohesion_v2(c):
    if c.d > 0 and c.pair:
        c.r["normalForce"] = times(c.n, c.pair["energyDensity"] * PI * c.d * (c.r1 if c.geometry else c.radius))


def jkr(c):
    gamma = c.pair.get("surfaceEnergy", 0.0)
    fh = fa = 0.0
    if gamma > 0:
        # The greatest root by bisection of the other form: d = a^2 / R - sqrt(4 pi gamma a / E), above its least.
        lowest = power(PI * gamma * c.radius * c.radius / (4 * c.young), 1 / 3)
        def overlap(a): return a * a / c.radius - math.sqrt(4 * PI * gamma * a / c.young)
        if c.d >= overlap(lowest):
            low, high = lowest, 10 * c.radius
            while high - low > 1e-16 * high and low < (low + high) / 2 < high:
                middle = (low + high) / 2
                low, high = (middle, high) if overlap(middle) < c.d else (low, middle)
            fh, fa = 4 / 3 * c.young * low ** 3 / c.radius, 4 * low * math.sqrt(PI * gamma * c.young * low)
    elif c.d > 0:
        fh = 4 / 3 * c.young * math.sqrt(c.d * c.radius) * c.d
    if c.d > 0 and c.e > 0:
        sn = 2 * c.young * math.sqrt(c.radius) * math.sqrt(c.d)
        c.r["normalDamping"] = c.against(2 * 0.9128709291752769 * c.beta * math.sqrt(sn * c.mass) * size(c.vn))
    c.r["normalForce"] = plus(times(c.n, -(fh - fa)), c.r["normalDamping"])
    if c.d > 0:
        st = 8 * c.shear * math.sqrt(c.radius) * math.sqrt(c.d)
        c.slide(st, 2 * c.beta * math.sqrt(5 / 6 * st * c.mass), fh * fh)
        c.roll(size(c.r["normalForce"]), sides(c))


def hysteretic(c):
    yields = c.s["parameters"]["yields"]
    if c.d <= 0 or not c.pair or c.a["name"] not in yields or c.b["name"] not in yields:
        return
    k = 5.0 * c.radius * min(yields[c.a["name"]], yields[c.b["name"]])
    kt = k * c.pair["stiffness"]
    rest = c.value(c.s["contactProperties"], "Residual Overlap")
    f1, f2 = k * c.d, (c.d - rest) * k / (c.e * c.e)
    f = f2
    if f1 < f2:
        f = f1
        c.add("contact", "Residual Overlap", (1 - c.e * c.e) * c.d - rest)
    elif c.d <= rest:
        f = 0.0
        c.add("contact", "Residual Overlap", c.d - rest)
    c.r["normalDamping"] = c.against(c.spring_damping(k) * c.pair["damping"] * size(c.vn))
    c.r["normalForce"] = plus(times(c.n, -f), c.r["normalDamping"])
    ft = times(c.o, -kt)
    if size(ft) > c.mus * f:
        c.r["tangentialForce"] = over(times(ft, c.mus * f), size(ft))
        c.o = times(over(c.r["tangentialForce"], kt), -1.0)
    else:
        along = math.sqrt(dot(c.vt, c.vt) * 4 * c.mass * kt / ((PI / math.log(c.e)) ** 2 + 1)) if c.e != 1 else 0.0
        c.r["tangentialDamping"] = times(unit(c.o), -along)
        c.r["tangentialForce"] = plus(ft, c.r["tangentialDamping"])
    c.roll(f, sides(c))


def edinburgh(c):
    p = c.pair
    n, x, t = p["slopeExponential"], p["tensileExponential"], p["tangentStiffMultiplier"]
    dp = c.value(c.s["contactProperties"], "Plastic Overlap")
    if c.geometry:
        d = min(2 * c.r1 - dp, 2 * c.r1 - c.d)
        rc = root(4 * (d * d) * (c.r1 * c.r1) - (d * d) * (d * d)) / (2 * d)
    else:
        d = min(size(minus(c.a["position"], c.b["position"])), c.r1 + c.r2 - dp)
        u = d * d - c.r2 * c.r2 + c.r1 * c.r1
        rc = root(4 * (d * d) * (c.r1 * c.r1) - u * u) / (2 * d)
    k1 = 4 / 3 * math.sqrt(c.radius) * c.young if n > 1 else 2 * c.young * c.radius
    k2 = k1 / (1 - p["contactPlasticityRatio"])
    fa = 1.5 * PI * p["surfaceEnergy"] * rc
    b3 = power(1 - k1 / k2, 1 / n) * c.d
    f3 = power(b3, n) * k2 / 2
    b4 = (power(dp, n) * k2 - fa) / k2
    if c.geometry:
        slope = power(power(b4, 1 / n) if -fa >= f3 else dp / 2, -x) * fa
    else:
        slope = 0.0 if fa == 0 else power(b3 / 2, -x) * f3 if fa > f3 else power(b4, -x / n) * fa
    slope = 0.0 if math.isnan(slope) else slope
    dn = power(c.d, n)
    adhesion, f1, f2 = -power(c.d, x) * slope, dn * k1, (dn - power(dp, n)) * k2
    f = f2
    if f2 >= f1:
        f = f1
        c.add("contact", "Plastic Overlap", b3 - dp)
    elif f2 <= adhesion:
        f = adhesion
        if dot(c.v, c.n) > 0:
            c.add("contact", "Plastic Overlap", power((dn * k2 - adhesion) / k2, 1 / n) - dp)
    linear, damped = n <= 1.001, n <= 1.001 and 0 < c.e < 1
    kappa = 2 * 0.9128709291752769 * c.beta
    damping = (c.spring_damping(2 * c.young * c.radius) if damped else 0.0) if linear else \
        kappa * root(2 * c.young * root(c.radius * c.d) * c.mass)
    c.r["normalDamping"] = times(c.n, -damping, dot(c.v, c.n))
    c.r["normalForce"] = plus(times(c.n, -(f + p["constPullOffForce"])), c.r["normalDamping"])
    w = minus(plus(times(cross(c.n, c.b["angularVelocity"]), c.r2), times(cross(c.n, c.a["angularVelocity"]), c.r1)), c.vt)
    load = f - adhesion
    kt = 2 * c.young * c.radius * t if linear else 8 * c.shear * root(c.radius * c.d) * t
    cd = (c.spring_damping(kt) if damped else 0.0) if linear else kappa * root(kt * c.mass)
    ft = minus(times(w, cd), times(c.o, kt))
    if load <= 0:
        ft = c.o = [0.0] * 3
    elif size(ft) > c.mus * load:
        ft = over(times(ft, c.mus * load), size(ft))
        c.o = over(minus(times(w, cd), ft), kt)
    c.r["tangentialForce"] = ft
    c.roll(size(c.r["normalForce"]), sides(c))


def leeds(c):
    if c.d <= 0 or not c.pair:
        return
    p, now = c.pair, c.s["contactProperties"]
    k1, k2, ka, kt = (p[k] for k in ("plasticStiffness", "elasticStiffness", "plasticAdhesiveStiffness", "tangentialStiffness"))
    f0, fp = p["initialAdhesiveForce"], p["initialAdhesivePlasticForce"]
    most, plastic, cohesive, zero = (now["LEPA " + k][0] for k in ("Maximum Overlap", "Is Plastic", "Is Cohesive", "Is Zero"))
    def put(name, value): c.add("contact", "LEPA " + name, value - now["LEPA " + name][0])
    dp = ((k2 - k1) * most - f0) / k2
    dc = (k2 * dp + fp) / (ka + k2)
    between = 1.4444444444444444 * dc - 0.4444444444444444 * dp
    end = ((k2 - ka) * dc + fp) / k2 if c.geometry else between
    elastic, adhesive, first = (c.d - dp) * k2, -(c.d - 2 * dc + dp) * k2, k1 * c.d + f0
    k = k2
    if c.loads:
        if plastic != 1:
            k, f = k1, first
            put("Is Cohesive", 0.0)
            if c.d > most:
                put("Maximum Overlap", c.d)
        elif cohesive != 1:
            if c.d <= most:
                f = elastic
            else:
                k, f = k1, first
                put("Maximum Overlap", c.d)
                put("Is Plastic", 0.0)
        elif zero == 1 and c.d < end:
            k, f = 0.0, 0.0
        else:
            if zero == 1:
                put("Is Zero", 0.0)
            f = adhesive if c.d < dc else elastic
            if c.d >= dc:
                put("Is Cohesive", 0.0)
    else:
        put("Is Plastic", 1.0)
        if cohesive == 1:
            if zero != 1 and c.d > between:
                f = adhesive
            else:
                k, f = 0.0, 0.0
                put("Is Zero", 1.0)
        elif c.d < dc:
            f = adhesive
            put("Is Cohesive", 1.0)
        else:
            f = elastic
    damped = c.e != 1 and k != 0 and c.e > 0
    c.r["normalDamping"] = c.against((c.spring_damping(k, 3.141592654) if damped else 0.0) * size(c.vn))
    c.r["normalForce"] = plus(times(c.n, -f), c.r["normalDamping"])
    ft = times(c.o, -(kt if k != 0 else 0.0))
    limit = c.mus * (2 * (ka * dc - fp) + size(times(c.n, f)))
    if size(ft) > limit:
        c.r["tangentialForce"] = c.r["tangentialDamping"] = over(times(ft, limit), size(ft)) if size(ft) > 0 else [0.0] * 3
        c.o = times(over(c.r["tangentialForce"], kt), -1.0)
    else:
        c.r["tangentialForce"] = ft
        if damped and size(ft) > 0:
            c.r["tangentialForce"] = minus(ft, times(over(ft, size(ft)), c.spring_damping(kt, 3.141592654), size(c.vt)))
    for side, e in ((1, c.a), (2, c.b))[:sides(c)]:
        w = e["angularVelocity"]
        if abs(dot(w, w)) > 1e-25:
            t = times(unit(w), -1.0, size(c.r["normalForce"]), e["physicalRadius"], c.mur, size(e["contactVector"]))
            c.r[f"torque{side}"] = c.r[f"rollingTorque{side}"] = over(t, e["contactRadius"])


def bond(c):
    held, p = c.s["bond"], c.s["parameters"]["bondParameters"][0]
    fb, tb, torque = [0.0] * 3, [0.0] * 3, [0.0] * 3
    if held and held["intact"] == 1 and not c.geometry:
        r2 = p["bondRadius"] * p["bondRadius"]
        area, polar = PI * r2, PI * (r2 * r2) / 2
        turn = times(minus(c.a["angularVelocity"], c.b["angularVelocity"]), c.dt)
        twist = times(c.n, dot(turn, c.n))
        kn, ks = p["normalStiffness"], p["shearStiffness"]
        fb = minus(held["normalForce"], times(c.vn, c.dt, kn, area))
        tb = minus(held["tangentialForce"], times(c.vt, c.dt, ks, area))
        mn = minus(held["normalMoment"], times(twist, polar, ks))
        mt = minus(held["tangentialMoment"], times(minus(turn, twist), polar / 2, kn))
        tension = abs(size(mt) * p["bondRadius"] / (polar / 2) - size(fb) / area)
        torque = plus(mn, mt)
        if tension > p["normalStrength"] or size(mn) * p["bondRadius"] / polar + size(tb) / area > p["shearStrength"]:
            fb, tb, torque = [0.0] * 3, [0.0] * 3, [0.0] * 3
    rolling1, rolling2, fs, ft = [0.0] * 3, [0.0] * 3, [0.0] * 3, [0.0] * 3
    if c.d > 0:
        c.v1 = plus(c.v1, cross(c.a["angularVelocity"], times(c.n, c.r1 - c.a["contactRadius"])))
        c.v2 = plus(c.v2, cross(c.b["angularVelocity"], times(c.n, c.b["contactRadius"] - c.r2)))
        c.move()
        fs, ft = c.hertz(sides(c))
        rolling1, rolling2 = c.r["torque1"], c.r["torque2"]
    c.r["normalForce"] = plus(fs, fb, c.r["normalDamping"])
    c.r["tangentialForce"] = plus(ft, tb, c.r["tangentialDamping"])
    c.r["torque1"] = c.r["rollingTorque1"] = plus(torque, rolling1)
    c.r["torque2"] = c.r["rollingTorque2"] = plus(times(torque, -1.0), rolling2)


def tribocharging(c):
    w1, w2 = c.s["material1"]["workFunction"], c.s["material2"]["workFunction"]
    if c.d <= 0 or c.b.get("exempt") or w1 == w2:
        return
    first = c.r2 >= c.r1 and not (c.r1 == c.r2 and w2 < w1)
    e, r = (c.a, c.r1) if first else (c.b, c.r2)
    change = (4 * PI * (r * r) * 2.66e-5 - abs(e["properties"]["Charge"][0])) * c.s["parameters"]["alpha"] * c.dt
    c.add("element1", "Charge", change if first else -change)
    c.add("element2", "Charge", -change if first else change)


LAWS = {
    "Hertz-Mindlin (no slip)": hertz_mindlin, "Hertz-Mindlin (no slip) with RVD Rolling Friction": rvd,
    "Linear Spring": linear_spring, "Hertz-Mindlin with JKR": jkr, "Hertz-Mindlin with heat conduction": heat,
    "Hertz-Mindlin with Archard Wear": archard, "Hertz-Mindlin with bonding": bond, "Hysteretic Spring": hysteretic,
    "Edinburgh Elasto-Plastic Adhesion": edinburgh, "Leeds Elastic-Plastic Adhesion": leeds, "Linear Cohesion": cohesion,
    "Linear Cohesion V2": cohesion_v2, "Tribocharging": tribocharging, "Moving Plane": lambda c: None,
    "Relative Wear": relative_wear,
}


def random_state(rnd, model):
    def vector(scale): return [rnd.uniform(-scale, scale) for _ in range(3)]
    geometry, r1, r2 = rnd.random() < 0.4, rnd.uniform(1e-3, 3e-3), rnd.uniform(1e-3, 3e-3)
    overlap = rnd.choice([rnd.uniform(1e-8, 2e-5), rnd.uniform(1e-8, 2e-5), 0.0, -1e-8])
    unloaded = rnd.uniform(0, 3e-5)
    def element(radius, kind, name, id):
        return {"kind": kind, "id": id, "name": name, "key1": id, "key2": 7, "mass": rnd.uniform(1e-6, 1e-4),
                "contactRadius": radius * rnd.choice([1.0, 1.1]), "physicalRadius": radius, "position": [0.0] * 3,
                "angularVelocity": rnd.choice([vector(10), [0.0] * 3]), "contactVector": vector(radius),
                "centreOfMass": vector(1e-4), "area": rnd.uniform(1e-6, 1e-4)}
    def material(name):
        return {"name": name, "poissonsRatio": rnd.uniform(0.1, 0.45), "shearModulus": 10 ** rnd.uniform(6, 10),
                "workFunction": rnd.choice([1.0, rnd.uniform(1, 5)])}
    a, b = element(r1, 0, "A", 3), element(r2, int(geometry), "B", rnd.choice([1, 5]))
    direction = unit(vector(1))
    b["position"] = times(direction, r1 + r2 - overlap)
    shared = {"Temperature": lambda: [rnd.uniform(280, 400)], "Heat Flux": lambda: [0.0, 0.0], "Charge": lambda: [rnd.uniform(-1e-9, 1e-8)]}
    a["properties"] = {k: v() for k, v in shared.items()}
    b["properties"] = {k: v() for k, v in shared.items()}
    if geometry:
        b["properties"] = {k: [0.0] for k in ("Charge", "Archard Wear", "Normal Cumulative Contact Energy", "Tangential Cumulative Contact Energy",
                                              "Normal Cumulative Force", "Tangential Cumulative Force")}
    entry = {"pair": ["n", "m"], "energyDensity": rnd.uniform(1e3, 1e6), "surfaceEnergy": rnd.choice([0.0, rnd.uniform(0.01, 5)]),
             "damping": rnd.uniform(0, 1), "stiffness": rnd.uniform(0.3, 1), "constPullOffForce": rnd.choice([0.0, 1e-3]),
             "contactPlasticityRatio": rnd.uniform(0.1, 0.9), "slopeExponential": rnd.choice([1.0, 1.5, 1.2]),
             "tensileExponential": rnd.choice([1.0, 1.5, 5.0]), "tangentStiffMultiplier": rnd.uniform(0.3, 1),
             "plasticStiffness": rnd.uniform(1e4, 4e4), "elasticStiffness": rnd.uniform(5e4, 2e5),
             "plasticAdhesiveStiffness": rnd.uniform(1e3, 2e4), "tangentialStiffness": rnd.uniform(1e4, 1e5),
             "initialAdhesiveForce": -rnd.uniform(0, 0.1), "initialAdhesivePlasticForce": -rnd.uniform(0, 0.1)}
    held = {"intact": rnd.choice([1, 1, 0]), "brokenAt": 0.0, "normalForce": vector(5), "tangentialForce": vector(5),
            "normalMoment": vector(1e-3), "tangentialMoment": vector(1e-3)}
    return {
        "model": model, "modelType": int(geometry), "time": 1.0, "timeStep": 1e-6, "element1": a, "element2": b,
        "material1": material("m"), "material2": material("n"),
        "interaction": {"restitution": rnd.choice([rnd.uniform(0.05, 0.99), 1.0]), "staticFriction": rnd.uniform(0, 0.9),
                        "rollingFriction": rnd.uniform(0, 0.1)},
        "velocity1": vector(1), "velocity2": vector(1), "contactPoint": times(direction, r1 - overlap / 2),
        "normalOverlap": overlap, "tangentialOverlap": rnd.choice([vector(10 ** rnd.uniform(-9, -5)), [0.0] * 3]),
        "contactProperties": {
            "Previous Normal Velocity": [rnd.uniform(-1, 1)], "Residual Overlap": [unloaded], "Plastic Overlap": [unloaded],
            "LEPA Maximum Overlap": [unloaded], "LEPA Is Plastic": [float(rnd.random() < 0.6)],
            "LEPA Is Cohesive": [float(rnd.random() < 0.5)], "LEPA Is Zero": [float(rnd.random() < 0.5)]},
        "results": {"normalForce": vector(3), "tangentialForce": vector(3)} if model == "Relative Wear" else {},
        "bond": rnd.choice([held, None]) if model == "Hertz-Mindlin with bonding" else None,
        "parameters": {
            "characteristicVelocity": rnd.uniform(0.5, 5), "conductivities": {"A": rnd.uniform(0, 5), "B": rnd.uniform(0, 5)},
            "wearConstants": rnd.choice([{"B": 1e-12}, {}]), "pairs": [entry] if rnd.random() < 0.9 or "Edinburgh" in model else [],
            "yields": rnd.choice([{"A": 1e7, "B": 2e7}, {"A": 1e7, "B": 2e7}, {"A": 1e7}]), "alpha": rnd.uniform(0.1, 2), "state": 2,
            "bondParameters": [{"pair": ["m", "n"], "normalStiffness": 1e9, "shearStiffness": 5e8, "bondRadius": 1e-3,
                                "normalStrength": rnd.choice([1e6, 1e12]), "shearStrength": rnd.choice([1e6, 1e12])}]},
    }


def same(found, wanted, ulps):
    """Whether two vectors differ by so many units in the last place of their length; null is what isn't finite."""
    wanted = [x if math.isfinite(x) else None for x in wanted]
    if None in found or None in wanted:
        return found == wanted
    return all(abs(x - y) <= ulps * 2.0 ** -52 * size(wanted) for x, y in zip(found, wanted))


def main():
    tool = sys.argv[1]
    rnd = random.Random(11)
    states = [random_state(rnd, model) for model in LAWS for _ in range(400)]
    run = subprocess.run([tool, "law", "--states", "-"], input=json.dumps(states), capture_output=True, text=True, check=True)
    faults, acted = [], {model: 0 for model in LAWS}
    for number, (state, found) in enumerate(zip(states, json.loads(run.stdout))):
        c = Contact(state)
        LAWS[state["model"]](c)
        expected = dict(c.r, tangentialOverlap=c.o, velocity1=c.v1, velocity2=c.v2)
        acted[state["model"]] += any(x != 0 for v in c.r.values() for x in v) or any(c.changes.values())
        # A root of a quartic, and powers of differences, lose digits that neither side has.
        ulps = 1e7 if "JKR" in state["model"] else 1e4 if "Edinburgh" in state["model"] else 4
        for name, vector in expected.items():
            if not same(found[name], vector, ulps):
                faults.append(f"state {number} ({state['model']}): {name} is {found[name]}, expected {vector}")
        for item, changes in found["changes"].items():
            for name, values in changes.items():
                wanted = c.changes[item].get(name, [0.0] * len(values))
                if not same((values + [0.0, 0.0])[:3], (wanted + [0.0, 0.0])[:3], ulps):
                    faults.append(f"state {number} ({state['model']}): {item} {name} is {values}, expected {wanted}")
    idle = [model for model, count in acted.items() if count < 60 and model != "Moving Plane"]
    print("\n".join(faults[:20] + [f"{model} hardly ever acts" for model in idle]))
    return 1 if faults or idle or run.stderr else 0


if __name__ == "__main__":
    sys.exit(main())
