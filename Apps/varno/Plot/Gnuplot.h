/// Draws plots by gnuplot, which has axes, legends and both formats of pictures. It runs as a program of its
/// own: its libraries are not needed to render files.
#ifndef VARNO_APPS_VARNO_PLOT_GNUPLOT_H
#define VARNO_APPS_VARNO_PLOT_GNUPLOT_H

#include "Plot/Plot.h"

#include <string>

namespace varno {

enum class PictureFormat { kSvg, kPng };

/// What gnuplot reads to draw a plot to its standard output. [any]
std::string gnuplotScript(const Plot& plot, PictureFormat format);

/// The picture as the content of a file. [main]
/// @throws WorkError where gnuplot is not installed or fails; Interrupted
std::string drawPlot(const Plot& plot, PictureFormat format);

} // namespace varno

#endif
