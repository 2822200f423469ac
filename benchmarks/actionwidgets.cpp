// SPDX-License-Identifier: MIT
// A tool box and a task card cost about the same with a thousand functions as with ten, since all of them
// share one list. The style sheet of tool boxes is parsed once for all, since the surface below carries it;
// each card wears its own.
#include "actionsheets.h"
#include "actiontaskblockwidget.h"
#include "actiontoolbox.h"
#include "functioncombobox.h"
#include "overlaymaterial.h"
#include "pair.h"
#include "sharedsheet.h"
#include "subjects.h"

#include <algorithm>
#include <memory>

namespace
{
constexpr int fewFunctions = 10;
constexpr int manyFunctions = 1000;
constexpr int editorsOfARound = 50;
constexpr int editorsOfASheet = 200;

struct Boxes
{
    using Editor = ActionToolBox;
    static void dress(QWidget *ground) { carrySheet(ground, toolBoxSheet()); }
    static void give(Editor *box, const QJsonArray &catalogue) { box->setExternalServices(catalogue); }
};

struct BoxesOnBareGround : Boxes
{
    static void dress(QWidget *) {}
};

struct Cards
{
    using Editor = ActionTaskBlockWidget;
    static void dress(QWidget *) {}
    static void give(Editor *card, const QJsonArray &catalogue) { card->setFunctions(catalogue); }
};

/// A window on show that is filled with editors anew in each round.
template <typename Kind>
class Surface
{
public:
    Surface(int functions, int editors)
        : m_catalogue(catalogueOf(functions))
        , m_editors(editors)
    {
        m_window.resize(800, 600);
        m_window.show();
        settle();
    }

    [[nodiscard]] Side fillings()
    {
        return timed([this] { fill(m_editors); }, [this] { empty(); });
    }

    /// Whether each editor is there and offers no function and all functions.
    [[nodiscard]] bool isFilled() const
    {
        const auto editors =
            m_ground->template findChildren<typename Kind::Editor *>(Qt::FindDirectChildrenOnly);
        const auto combos = m_ground->template findChildren<FunctionComboBox *>();
        return editors.size() == m_editors + 1 && combos.size() == editors.size() &&
               std::ranges::all_of(combos, [this](const FunctionComboBox *combo) {
                   return combo->count() == m_catalogue.size() + 1;
               });
    }

private:
    void fill(int editors)
    {
        for (int i = 0; i < editors; ++i) {
            auto *editor = new typename Kind::Editor(m_ground.get());
            Kind::give(editor, m_catalogue);
            editor->move(i % 10 * 20, i / 10 * 30);
            editor->show();
        }
    }

    void empty()
    {
        m_ground = std::make_unique<QWidget>(&m_window);
        m_ground->resize(800, 600);
        Kind::dress(m_ground.get());
        m_ground->show();
        // The first has the catalogue read, and its entries measured, for all that follow.
        fill(1);
        settle();
    }

    QJsonArray m_catalogue;
    int m_editors;
    QWidget m_window;
    std::unique_ptr<QWidget> m_ground;
};

template <typename Kind>
void measureCatalogue(benchmark::State &state)
{
    Surface<Kind> many(manyFunctions, editorsOfARound);
    Surface<Kind> few(fewFunctions, editorsOfARound);
    compare(state, many.fillings(), few.fillings());
    require(state, many.isFilled() && few.isFilled(), "an editor does not offer its functions");
}

void measureSheet(benchmark::State &state)
{
    Surface<Boxes> shared(fewFunctions, editorsOfASheet);
    Surface<BoxesOnBareGround> own(fewFunctions, editorsOfASheet);
    compare(state, shared.fillings(), own.fillings());
    require(state, shared.isFilled() && own.isFilled(), "an editor was not made");
}
} // namespace

void addActionWidgetPairs(const Suite &suite)
{
    suite.add({.name = "toolboxes/thousand-functions",
               .what = "a tool box with 1,000 functions, over one with 10",
               .limit = 1.5,
               .rounds = 31},
              measureCatalogue<Boxes>);
    suite.add({.name = "toolboxes/one-sheet",
               .what = "200 tool boxes below one style sheet, over 200 with their own",
               .limit = {},
               .rounds = 11},
              measureSheet);
    suite.add({.name = "taskcards/thousand-functions",
               .what = "a task card with 1,000 functions, over one with 10",
               .limit = 1.5,
               .rounds = 31},
              measureCatalogue<Cards>);
}
