#pragma once

#include "ui/menubar/PanelFixture.h"

/// A state that the panel can be in: what is different from a healthy machine with an error and an outcome to tell.
struct PanelState final {
    const char* name;
    void (*make)(PanelFixture&);
};
Q_DECLARE_METATYPE(const PanelState*)

namespace PanelStates {

using Band = StatusModel::Band;

inline void healthy(PanelFixture& panel) {
    panel.fill();
    panel.status.lastError = QStringLiteral("The request timed out.");
    panel.status.cliMessage = QStringLiteral("done in 2 s");
}

inline void neverPolled(PanelFixture& panel) {
    auto& status = panel.status;
    status.bridgeOnline = false;
    status.caddyBand = Band::unknown;
    status.postgresOk = std::nullopt;
    for (auto* text :
         {&status.caddyDetail, &status.postgresDetail, &status.hostLoad, &status.hostMemory, &status.hostDisk}) {
        *text = QStringLiteral("—");
    }
    status.services = QList<StatusModel::ServiceRow>{};
    status.lastError = std::nullopt;
    status.lastPoll = std::nullopt;
    status.cliMessage = std::nullopt;
}

inline void unreachable(PanelFixture& panel) {
    neverPolled(panel);
    panel.status.caddyDetail = QStringLiteral("bridge unreachable");
    panel.status.lastError = QStringLiteral("connection refused");
}

inline void withoutServices(PanelFixture& panel) {
    panel.status.services = QList<StatusModel::ServiceRow>{};
    panel.status.lastError = std::nullopt;
}

inline void middling(PanelFixture& panel) {
    panel.status.hostDisk = QStringLiteral("71% · 138 GB");
    panel.status.caddyDetail = QStringLiteral("two lines of a text that has to be wrapped once");
    panel.status.services =
        QList<StatusModel::ServiceRow>{{{},
                                        QStringLiteral("edge"),
                                        true,
                                        QStringLiteral("running · 4/4 sites · 12 routes · tls · http/3 · http/2"),
                                        {}}};
}

template <Band band>
void inBand(PanelFixture& panel) {
    panel.status.caddyBand = band;
    panel.status.postgresOk = band == Band::red ? std::optional{false} : std::nullopt;
}

template <Daypart daypart>
void pinned(PanelFixture& panel) {
    panel.daypart.set(daypart);
}

inline constexpr PanelState all[]{
    {"never polled", neverPolled},
    {"unreachable", unreachable},
    {"no services", withoutServices},
    {"long texts", [](PanelFixture& panel) { panel.fillWith(QStringLiteral("words of a long text · ").repeated(30)); }},
    {"one long word", [](PanelFixture& panel) { panel.fillWith(QString{20'000, u'w'}); }},
    {"lines and markup",
     [](PanelFixture& panel) { panel.fillWith(QStringLiteral("<b>R&D</b> &amp;\ntwo\r\nthree\n\nfour\nfive")); }},
    {"empty texts", [](PanelFixture& panel) { panel.fillWith({}); }},
    {"middling texts", middling},
    {"busy", [](PanelFixture& panel) { panel.status.cliBusy = true; }},
    {"amber", inBand<Band::amber>},
    {"red", inBand<Band::red>},
    {"unknown", inBand<Band::unknown>},
    {"dawn", pinned<Daypart::dawn>},
    {"dusk", pinned<Daypart::dusk>},
    {"night", pinned<Daypart::night>},
};

/// Of a data test, a row for each state.
inline void addRows() {
    QTest::addColumn<const PanelState*>("state");
    for (const auto& state : all) {
        QTest::newRow(state.name) << &state;
    }
}

}
