#ifndef VARNO_AUDIOFILE_MPEGLENGTH_H
#define VARNO_AUDIOFILE_MPEGLENGTH_H

namespace varno {

/// Whether an MPEG audio file states how many frames it has: its first frame holds a record of Xing ("Xing"
/// or "Info") or Fraunhofer ("VBRI") instead of sound. Without one, only reading the file shows its length.
/// @param descriptor open for reading, able to seek; its position stays
bool mpegStatesLength(int descriptor);

} // namespace varno

#endif
