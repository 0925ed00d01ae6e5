# SPDX-License-Identifier: MIT
"""The logarithmic charts of docs/performance.md."""

import matplotlib

matplotlib.use("svg")
matplotlib.rcParams.update({"svg.hashsalt": "haldend", "svg.fonttype": "none", "font.size": 9, "axes.grid": True,
                            "grid.alpha": 0.3, "figure.constrained_layout.use": True})

from matplotlib import pyplot  # noqa: E402

from measure.growth import AXES  # noqa: E402

LABELS = {"texts": "number of texts", "clients": "clients connected", "characters": "characters"}


def draw(axes, counts, lines, limits):
    for name, costs in lines.items():
        axes.plot([max(count, 1) for count in counts], costs, marker="o", markersize=3,
                  linestyle="--" if name == "bare Qt" else "-", label=name)
    for number, (name, cost) in enumerate(limits.items()):
        axes.axhline(cost, color="black", linestyle=("--", ":")[number % 2], linewidth=1, label=name)
    axes.set_xscale("log")
    axes.set_yscale("log")


def chart(file, axis, groups, limits):
    columns = min(2, len(groups))
    figure, plots = pyplot.subplots(-(-len(groups) // columns), columns, squeeze=False, sharex=True, sharey=True,
                                    figsize=(4.5 * columns + 1, 3 * -(-len(groups) // columns) + 0.6))
    for plot, (title, lines) in zip(plots.flat, groups.items()):
        draw(plot, AXES[axis], lines, limits)
        plot.set_title(title)
    for plot in plots[-1]:
        plot.set_xlabel(LABELS[axis])
    for plot in plots[:, 0]:
        plot.set_ylabel("processor time, µs a call")
    plots[0][-1].legend(loc="upper left", bbox_to_anchor=(1, 1), fontsize=8)
    figure.savefig(file, metadata={"Date": None})
    pyplot.close(figure)


def draw_all(folder, grown):
    limits = {"limit: bus and Qt": grown["limits"]["getter"],
              "limit: with 20 cells": grown["limits"]["20 cells"]}
    for axis in AXES:
        chart(folder / f"performance-{axis}.svg", axis, grown[axis], limits if axis == "texts" else {})
