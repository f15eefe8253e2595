#include "ui/editor/TextSpans.h"

#include <algorithm>
#include <set>

namespace zarvy {
namespace {

// The spans that lie over a place, by their positions in the list.
class Overlay {
 public:
  explicit Overlay(const std::vector<TextSpan>& spans) : m_spans(spans) {}

  void add(std::size_t index) {
    m_all.insert(index);
    if (m_spans[index].look.ground) m_withGround.insert(index);
    if (m_spans[index].look.isBold) ++m_boldOnes;
  }

  void remove(std::size_t index) {
    m_all.erase(index);
    m_withGround.erase(index);
    if (m_spans[index].look.isBold) --m_boldOnes;
  }

  [[nodiscard]] bool isEmpty() const { return m_all.empty(); }

  [[nodiscard]] SpanLook look() const {
    SpanLook look = m_spans[*m_all.rbegin()].look;
    if (!m_withGround.empty()) look.ground = m_spans[*m_withGround.rbegin()].look.ground;
    look.isBold = m_boldOnes > 0;
    return look;
  }

 private:
  const std::vector<TextSpan>& m_spans;
  std::set<std::size_t> m_all;
  std::set<std::size_t> m_withGround;
  int m_boldOnes = 0;
};

struct Edge {
  qsizetype position = 0;
  std::size_t span = 0;
  bool isStart = false;
};

std::vector<Edge> edgesOf(const std::vector<TextSpan>& spans) {
  std::vector<Edge> edges;
  for (std::size_t index = 0; index < spans.size(); ++index) {
    if (spans[index].range.length == 0) continue;
    edges.push_back({spans[index].range.start, index, true});
    edges.push_back({spans[index].range.end(), index, false});
  }
  std::sort(edges.begin(), edges.end(),
            [](const Edge& a, const Edge& b) { return a.position < b.position; });
  return edges;
}

void append(std::vector<TextSpan>& spans, const TextSpan& span) {
  const bool goesOn = !spans.empty() && spans.back().range.end() == span.range.start &&
                      spans.back().look == span.look;
  if (goesOn) {
    spans.back().range.length += span.range.length;
  } else {
    spans.push_back(span);
  }
}

}  // namespace

std::vector<TextSpan> withoutOverlaps(const std::vector<TextSpan>& spans) {
  std::vector<TextSpan> result;
  Overlay overlay(spans);
  qsizetype position = 0;
  for (const Edge& edge : edgesOf(spans)) {
    if (edge.position > position && !overlay.isEmpty()) {
      append(result, {{position, edge.position - position}, overlay.look()});
    }
    position = edge.position;
    if (edge.isStart) {
      overlay.add(edge.span);
    } else {
      overlay.remove(edge.span);
    }
  }
  return result;
}

}  // namespace zarvy
