// SPDX-License-Identifier: MIT
// Writing and reading a mapping takes each pastille the same time, however many there are and however long
// the catalogue is.
#include "interactiveoverlay.h"
#include "overlaymaterial.h"
#include "pair.h"
#include "subjects.h"

using namespace Qt::StringLiterals;

namespace
{
constexpr int someNodes = 200;
constexpr int moreNodes = 400;
constexpr int fewFunctions = 10;
constexpr int manyFunctions = 1000;

/// An overlay whose pastilles are all bound.
class BoundOverlay
{
public:
    BoundOverlay(int nodes, int functions)
        : m_mapping(mappingOf(nodes, functions))
    {
        m_overlay.setExternalServices(catalogueOf(functions));
        m_overlay.fromJson(overlayDocumentOf(nodes));
        applyMapping();
        settle();
    }

    void exportBridges() { m_bridges = m_overlay.exportBridges().value("bridges"_L1).toArray(); }
    void applyMapping() { m_applied = m_overlay.applyMapping(m_mapping); }

    /// Whether the bridges are those of the mapping, with the tasks of each function.
    [[nodiscard]] bool holdsItsMapping()
    {
        exportBridges();
        const QJsonArray wanted = m_mapping["bridges"_L1].toArray();
        if (!m_applied || m_bridges.size() != wanted.size())
            return false;
        for (qsizetype i = 0; i < wanted.size(); ++i) {
            const QJsonValue task = m_bridges[i]["dst"_L1][0];
            if (m_bridges[i]["action"_L1] != wanted[i]["action"_L1] || task["args"_L1]["v"_L1] != 2.5)
                return false;
        }
        return true;
    }

private:
    QJsonObject m_mapping;
    InteractiveOverlay m_overlay;
    QJsonArray m_bridges;
    bool m_applied = false;
};

Side exports(BoundOverlay &overlay)
{
    return repeated([&overlay] { overlay.exportBridges(); });
}

Side imports(BoundOverlay &overlay)
{
    return timed([&overlay] { overlay.applyMapping(); }, settle);
}

template <typename SideOf>
void compareOverlays(benchmark::State &state, SideOf sideOf, BoundOverlay &ours, BoundOverlay &bare)
{
    compare(state, sideOf(ours), sideOf(bare));
    require(state, ours.holdsItsMapping() && bare.holdsItsMapping(), "an overlay does not hold its mapping");
}

template <typename SideOf>
auto overNodes(SideOf sideOf)
{
    return [sideOf](benchmark::State &state) {
        BoundOverlay more(moreNodes, manyFunctions);
        BoundOverlay some(someNodes, manyFunctions);
        compareOverlays(state, sideOf, more, some);
    };
}

template <typename SideOf>
auto overFunctions(SideOf sideOf)
{
    return [sideOf](benchmark::State &state) {
        BoundOverlay many(someNodes, manyFunctions);
        BoundOverlay few(someNodes, fewFunctions);
        compareOverlays(state, sideOf, many, few);
    };
}
} // namespace

void addOverlayMappingPairs(const Suite &suite)
{
    suite.add({.name = "mapping/export-growth",
               .what = "the bridges of 400 pastilles with 1,000 actions, over those of 200",
               .limit = 2.2,
               .rounds = 101},
              overNodes(exports));
    suite.add({.name = "mapping/export-actions",
               .what = "the bridges of 200 pastilles with 1,000 actions, over those with 10",
               .limit = 1.5,
               .rounds = 101},
              overFunctions(exports));
    suite.add({.name = "mapping/apply-growth",
               .what = "applying 400 bridges with 1,000 actions, over applying 200",
               .limit = 2.2,
               .rounds = 51},
              overNodes(imports));
    suite.add({.name = "mapping/apply-actions",
               .what = "applying 200 bridges with 1,000 actions, over applying them with 10",
               .limit = 1.5,
               .rounds = 51},
              overFunctions(imports));
}
