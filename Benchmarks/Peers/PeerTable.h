/// The effects that ours is set beside, and how they are set to work on music that peaks at -3 dBFS.
#ifndef VARNO_BENCHMARKS_PEERS_PEERTABLE_H
#define VARNO_BENCHMARKS_PEERS_PEERTABLE_H

#include <span>

namespace varno::bench {

/// A control input and its value, in the port's own unit.
struct PeerControl {
    const char* symbol;
    float value;
};

/// One effect.
struct Peer {
    const char* name; ///< As people call it; also what its measurement is called.
    const char* uri;
    std::span<const PeerControl> controls; ///< All others have their defaults.
};

/// Ours, as the routine alone is measured: its defaults and a drive.
inline constexpr PeerControl kOwnControls[] = {{"hot", 0.4F}};
inline constexpr Peer kOwnMono = {"Varno-S mono", "urn:morvak:varno-s#mono", kOwnControls};
inline constexpr Peer kOwnStereo = {"Varno-S", "urn:morvak:varno-s#stereo", kOwnControls};

inline constexpr PeerControl kDplControls[] = {{"threshold", -10.0F}};
inline constexpr PeerControl kDarcControls[] = {{"threshold", -30.0F}, {"Ratio", 0.75F}};
inline constexpr PeerControl kSc4Controls[] = {
    {"threshold", -20.0F}, {"ratio", 4.0F}, {"attack", 10.0F}, {"release", 100.0F}};
inline constexpr PeerControl kCalfCompressorControls[] = {{"ratio", 4.0F}};
inline constexpr PeerControl kZamCompControls[] = {{"thr", -20.0F}};
inline constexpr PeerControl kInvadaCompressorControls[] = {{"threshold", -20.0F}, {"ratio", 4.0F}};
inline constexpr PeerControl kInvadaTubeControls[] = {{"drive", 9.0F}};
inline constexpr PeerControl kZamTubeControls[] = {{"tubedrive", 4.0F}};

/// Dynamics, then saturation.
inline constexpr Peer kPeers[] = {
    {"x42 dpl limiter", "http://gareus.org/oss/lv2/dpl#stereo", kDplControls},
    {"x42 darc compressor", "http://gareus.org/oss/lv2/darc#stereo", kDarcControls},
    {"SC4 compressor", "http://plugin.org.uk/swh-plugins/sc4", kSc4Controls},
    {"Calf compressor", "http://calf.sourceforge.net/plugins/Compressor", kCalfCompressorControls},
    {"LSP compressor", "http://lsp-plug.in/plugins/lv2/compressor_stereo", {}},
    {"ZamCompX2", "urn:zamaudio:ZamCompX2", kZamCompControls},
    {"Invada compressor", "http://invadarecords.com/plugins/lv2/compressor/stereo",
     kInvadaCompressorControls},
    {"Guitarix compressor (mono)", "http://guitarix.sourceforge.net/plugins/gx_compressor#_compressor", {}},
    {"Invada tube", "http://invadarecords.com/plugins/lv2/tube/stereo", kInvadaTubeControls},
    {"Calf saturator", "http://calf.sourceforge.net/plugins/Saturator", {}},
    {"Guitarix screamer (mono)", "http://guitarix.sourceforge.net/plugins/gx_scream_#_scream_", {}},
    {"ZamTube (mono)", "urn:zamaudio:ZamTube", kZamTubeControls},
};

} // namespace varno::bench

#endif
