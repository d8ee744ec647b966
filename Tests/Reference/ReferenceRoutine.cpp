#include "Tests/Reference/ReferenceRoutine.h"

#include "Tests/Reference/ReferenceTables.h"

#include <cmath>
#include <cstddef>

namespace varno::reference {
namespace {

// One channel's part of the state.
struct Channel {
    float& grAR;
    float& grSlow;
    float& lastOut;
    float& dcCoef;
    float& dcX1;
    float& dcY1;
    SDemoGain_SectionState& postA;
    SDemoGain_SectionState& postB;
    SDemoGain_SectionState& hp;
    SDemoGain_SectionState& ap;
    float& prevIn;
    float& clipGain;
};

Channel channelOf(SDemoGain_Alg_State& s, std::size_t i) {
    return {s.mFollowers[i].mGrEnvAR,
            s.mFollowers[i].mGrEnvSlow,
            s.mLastOut[i],
            s.mDc[i].mDcCoef,
            s.mDc[i].mDcX1,
            s.mDc[i].mDcY1,
            s.mPost[i].mA,
            s.mPost[i].mB,
            s.mDetector[i].mHp,
            s.mDetector[i].mAp,
            s.mPrevIn[i],
            s.mClipGain[i]};
}

// What is computed once per buffer.
struct Setup {
    float gIn;
    float gVol;
    bool hpOn;
    float drive;
    float invDrive;
    float bandGain;
    float bias;
    float T;
    float Tk;
    float c0;
    float c1;
    float c2;
    float c3;
    float topGR;
    float kAtt;
    float kRel;
    float kSlow;
};

Setup setUp(const SDemoGain_Alg_Context& context) {
    Setup p{};
    p.gIn = *context.mGainLin;
    p.gVol = *context.mVolumeLin;
    p.hpOn = *context.mHP > 0.5F;
    p.drive = *context.mHot * 19.999F + 0.001F;
    p.invDrive = 1.0F / p.drive;
    p.bandGain = 1.5F * (*context.mBand > 0.5F ? 1.0F : 0.0F) + 1.0F;
    p.bias = *context.mHarmSw > 0.5F ? 0.2F : 0.0F;
    p.T = *context.mThreshold;
    p.Tk = p.T + 45.0F;
    p.c0 = *context.mCurve0;
    p.c1 = *context.mCurve1;
    p.c2 = *context.mCurve2;
    p.c3 = *context.mCurve3;
    const float t = (p.Tk - p.T) * 0.022222223F;
    const float u = t * t;
    p.topGR = (((p.c3 * u + p.c2) * u + p.c1) * u + p.c0) * (t * -45.0F) - 0.000001F;
    p.kAtt = *context.mAttackCoef;
    p.kRel = *context.mReleaseCoef;
    p.kSlow = *context.mSlowCoef;
    return p;
}

// Everything from the input sample to the total gain reduction in dB.
float gainReduction(const Setup& p, const SDemoGain_Alg_State& state, Channel ch, float x) {
    const SDemoGain_DetectorSection& hp = state.mHp;
    const float h = (hp.b0 * x + hp.b1 * ch.hp.x1 - hp.a1 * ch.hp.y1) * hp.gain;
    ch.hp.x1 = x;
    ch.hp.y1 = h;

    const float d = p.hpOn ? h : x;

    const SDemoGain_DetectorSection& ap = state.mAp;
    const float a =
        (ap.b0 * d + ap.b1 * ch.ap.x1 + ap.b2 * ch.ap.x2 - ap.a1 * ch.ap.y1 - ap.a2 * ch.ap.y2) * ap.gain;
    ch.ap.x2 = ch.ap.x1;
    ch.ap.x1 = d;
    ch.ap.y2 = ch.ap.y1;
    ch.ap.y1 = a;

    const float det = ((d - a) * p.bandGain + (d + a)) * 0.5F * p.gIn;
    const float lvl = levelToDB(detectorLevel(det));

    float gr = 0.0F;
    const float t = (lvl - p.T) * 0.022222223F;
    const float u = t * t;
    if (lvl > p.Tk) {
        gr = p.topGR;
    } else if (lvl > p.T) {
        gr = (((p.c3 * u + p.c2) * u + p.c1) * u + p.c0) * (t * -45.0F) - 0.000001F;
    } else {
        gr = -0.000001F;
    }

    const float k = gr < ch.grAR ? p.kAtt : p.kRel;
    ch.grAR = (ch.grAR - gr) * k + gr;
    ch.grSlow = (ch.grSlow - gr) * p.kSlow + gr;
    return ch.grAR + ch.grSlow;
}

float runPostSection(const SDemoGain_PostSection& c, SDemoGain_SectionState& s, float in) {
    const float out = (c.b0 * in + c.b1 * s.x1 + c.b2 * s.x2 - c.a1 * s.y1 - c.a2 * s.y2) * c.g;
    s.x2 = s.x1;
    s.x1 = in;
    s.y2 = s.y1;
    s.y1 = out;
    return out;
}

float clipGainTarget(float c) {
    if (c <= 0.5F) {
        return 1.0F;
    }
    if (c <= 1.0F) {
        const float w = ((c - 0.5F) + (c - 0.5F)) * 1.5707964F;
        return ((w * -0.554926F * w * w + w * 1.55F) * 0.5F + 0.5F) / c;
    }
    return 1.0F / c;
}

// Everything from the delayed input sample to the sum of wet and dry.
float wetDrySum(const Setup& p, const SDemoGain_Alg_State& state, Channel ch, float G, float mix) {
    const float xPrev = ch.prevIn;
    const float gLin = gainToFactor(G);
    const float v = p.gIn * xPrev * gLin * p.drive;

    const float g = clipGainTarget(clipLevel(v, p.bias));
    if (ch.clipGain < g) {
        ch.clipGain = state.mClipCoef * ch.clipGain + (1.0F - state.mClipCoef) * g;
    } else {
        ch.clipGain = g;
    }
    const float y = v * ch.clipGain;

    const float sectionA = runPostSection(state.mPostA, ch.postA, y);
    runPostSection(state.mPostB, ch.postB, sectionA);

    const float z = (y * y * y * -0.49611F + y) * p.invDrive;
    const float o = ch.dcY1 * ch.dcCoef + (z - ch.dcX1);
    ch.dcY1 = o;
    ch.dcX1 = z;
    ch.lastOut = o;

    return xPrev * mix + (1.0F - mix) * o;
}

void raise(float& tap, float value) {
    if (!(tap > value)) {
        tap = value;
    }
}

void meterLevels(SDemoGain_Alg_State& state, float* taps, float input, float sum) {
    state.mInAvg = state.mInAvg * 0.99983F + std::fabs(input) * 0.00016999245F;
    state.mOutAvg = state.mOutAvg * 0.99983F + std::fabs(sum) * 0.00016999245F;
    raise(taps[2], state.mInAvg);
    if (!(state.mOutAvg < taps[3])) {
        taps[3] = state.mOutAvg;
    }
}

} // namespace

float levelToDB(float level) {
    float e = 0.0F;
    while (level > 15.848933F) {
        e += 12.0F;
        level *= 0.25F;
    }
    if (level < 0.0001F) {
        return e - 80.0F;
    }
    if (level < 15.848933F) {
        const float p = (level - 0.0001F) * 630.8982F;
        const auto i = static_cast<std::size_t>(p);
        return e + kLevelTable[i] + (kLevelTable[i + 1] - kLevelTable[i]) * (p - static_cast<float>(i));
    }
    return e + 24.0F;
}

float gainToFactor(float gainDB) {
    float f = 1.0F;
    while (gainDB > 24.0F) {
        gainDB -= 12.0F;
        f *= 0.25F;
    }
    float value = 15.848933F;
    if (gainDB < -80.0F) {
        value = 0.0001F;
    } else if (gainDB < 24.0F) {
        const float p = (gainDB + 80.0F) * 96.144226F;
        const auto i = static_cast<std::size_t>(p);
        value = kGainTable[i] + (kGainTable[i + 1] - kGainTable[i]) * (p - static_cast<float>(i));
    }
    return f * value;
}

float detectorLevel(float v) {
    if (std::fabs(v) > 1.0F) {
        return std::fabs(v);
    }
    const float s = v * v;
    const float ss = s * s;
    return 2.0F * ((-1.9086499F * ss + 4.5072875F * s - 3.7919977F) * ss + 1.6720511F * s);
}

float clipLevel(float v, float bias) {
    if (std::fabs(bias + v) > 1.0F) {
        return std::fabs(bias + v);
    }
    const float s = v * v;
    const float ss = s * s;
    return 2.0F * ((-1.9086499F * ss + 4.5072875F * s - 3.7919977F) * ss + 1.6720511F * s + 0.015623941F);
}

void processMono(SDemoGain_Alg_Context& context) {
    const Setup p = setUp(context);
    SDemoGain_Alg_State& state = *context.mState;
    const Channel ch = channelOf(state, 0);
    float* taps = context.mMeters;
    const float* input = context.mAudioIn[0];
    float* output = context.mAudioOut[0];

    for (std::int32_t n = 0; n < *context.mBufferSize; ++n) {
        const float x = input[n];
        const float G = gainReduction(p, state, ch, x);
        raise(taps[0], G * -0.03125F);
        taps[1] = taps[0];
        const float sum = wetDrySum(p, state, ch, G, *context.mMix);
        output[n] = *context.mBypass != 0 ? x : p.gVol * sum;
        state.mPrevIn[0] = x;
        state.mPrevIn[1] = x;
        meterLevels(state, taps, x, sum);
    }
}

void processStereo(SDemoGain_Alg_Context& context) {
    const Setup p = setUp(context);
    SDemoGain_Alg_State& state = *context.mState;
    const Channel left = channelOf(state, 0);
    const Channel right = channelOf(state, 1);
    float* taps = context.mMeters;
    const bool linked = *context.mLinkSw > 0.5F;
    const bool bypassed = *context.mBypass != 0;

    for (std::int32_t n = 0; n < *context.mBufferSize; ++n) {
        const float xL = context.mAudioIn[0][n];
        const float xR = context.mAudioIn[1][n];
        float gL = gainReduction(p, state, left, xL);
        float gR = gainReduction(p, state, right, xR);
        if (linked) {
            gL = gR = (gL + gR) * 0.5F;
        }
        raise(taps[1], gR * -0.03125F);
        raise(taps[0], gL * -0.03125F);
        taps[1] = taps[0];

        const float sumL = wetDrySum(p, state, left, gL, *context.mMix);
        const float sumR = wetDrySum(p, state, right, gR, *context.mMix);
        context.mAudioOut[0][n] = bypassed ? xL : p.gVol * sumL;
        context.mAudioOut[1][n] = bypassed ? xR : sumR * p.gVol;
        left.prevIn = xL;
        right.prevIn = xR;
        meterLevels(state, taps, xL, sumL);
    }
}

} // namespace varno::reference
