// SPDX-License-Identifier: MIT
#include "display/graph_parts.h"

#include "display/sweep_graph.h"

#include <QAccessible>
#include <QAccessibleWidget>

#include <array>

namespace calvorn {

namespace {

class SpokenPart : public QAccessibleObject
{
public:
    explicit SpokenPart(GraphPart *part)
        : QAccessibleObject(part)
    {
    }

    QAccessibleInterface *parent() const override { return QAccessible::queryAccessibleInterface(part()->parent()); }
    QAccessibleInterface *child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    QRect rect() const override { return part()->place(); }
    QAccessible::Role role() const override
    {
        return part()->kind() == GraphPart::Kind::Line ? QAccessible::Graphic : QAccessible::StaticText;
    }
    QString text(QAccessible::Text kind) const override
    {
        switch (kind) {
        case QAccessible::Name:
            return part()->objectName();
        case QAccessible::Description:
            return part()->graph().label(part()->item()).text;
        default:
            return {};
        }
    }
    QAccessible::State state() const override
    {
        QAccessible::State state;
        state.invisible = !part()->isShown();
        state.readOnly = true;
        return state;
    }

private:
    GraphPart *part() const { return static_cast<GraphPart *>(object()); }
};

class SpokenGraph : public QAccessibleWidget
{
public:
    explicit SpokenGraph(SweepGraph *graph)
        : QAccessibleWidget(graph, QAccessible::Chart)
    {
    }

    int childCount() const override { return static_cast<int>(parts().size()); }
    QAccessibleInterface *child(int index) const override
    {
        return QAccessible::queryAccessibleInterface(parts().value(index));
    }
    int indexOfChild(const QAccessibleInterface *child) const override
    {
        return static_cast<int>(parts().indexOf(qobject_cast<GraphPart *>(child->object())));
    }

private:
    QList<GraphPart *> parts() const { return widget()->findChildren<GraphPart *>(); }
};

QAccessibleInterface *makeSpoken(const QString &, QObject *object)
{
    if (auto *part = qobject_cast<GraphPart *>(object))
        return new SpokenPart(part);
    auto *graph = qobject_cast<SweepGraph *>(object);
    return graph ? new SpokenGraph(graph) : nullptr;
}

} // namespace

GraphPart::GraphPart(SweepGraph &graph, GraphItem item, Kind kind, const QString &name)
    : QObject(&graph)
    , m_graph(graph)
    , m_item(item)
    , m_kind(kind)
{
    setObjectName(name);
}

bool GraphPart::isShown() const
{
    return m_graph.isVisible() && m_graph.line(m_item).visible;
}

QRect GraphPart::place() const
{
    if (!isShown())
        return {};
    const QRect inGraph =
        m_kind == Kind::Line ? m_graph.lineRect(m_item).toAlignedRect() : m_graph.labelRect(m_item).toAlignedRect();
    return {m_graph.mapToGlobal(inGraph.topLeft()), inGraph.size()};
}

void addParts(SweepGraph &graph)
{
    [[maybe_unused]] static const bool installed = (QAccessible::installFactory(makeSpoken), true);
    constexpr std::array markers{GraphItem::M1, GraphItem::M2, GraphItem::M3, GraphItem::M4};
    for (std::size_t i = 0; i < markers.size(); ++i) {
        const QString name = QStringLiteral("M%1").arg(i + 1);
        new GraphPart(graph, markers[i], GraphPart::Kind::Line, QStringLiteral("line") + name);
        new GraphPart(graph, markers[i], GraphPart::Kind::Caption, QStringLiteral("lbl") + name);
    }
    new GraphPart(graph, GraphItem::CursorV, GraphPart::Kind::Line, QStringLiteral("LineCV"));
    new GraphPart(graph, GraphItem::CursorH, GraphPart::Kind::Line, QStringLiteral("LineCH"));
}

} // namespace calvorn
