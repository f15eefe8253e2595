#pragma once

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <iterator>
#include <utility>

#include <QList>

namespace zarvy {

// A long list whose copies are cheap to take and cheap to change. It is kept in chunks that copies
// share: a change of one record copies the chunk of that record, 512 records at most, where a QList
// copies all of them. Finding a position takes a look at each chunk. A value like QList; any
// thread, each object on one at a time.
template <typename T>
class ChunkedList {
 public:
  static constexpr qsizetype chunkSize = 512;

  // Visits the records in order. Valid until the list changes.
  class const_iterator {  // NOLINT(readability-identifier-naming): as the algorithms expect it
   public:
    using iterator_category = std::forward_iterator_tag;  // NOLINT(readability-identifier-naming)
    using value_type = T;                                 // NOLINT(readability-identifier-naming)
    using difference_type = std::ptrdiff_t;               // NOLINT(readability-identifier-naming)
    using pointer = const T*;                             // NOLINT(readability-identifier-naming)
    using reference = const T&;                           // NOLINT(readability-identifier-naming)

    const_iterator() = default;
    explicit const_iterator(const QList<T>* chunk, qsizetype index = 0)
        : m_chunk(chunk), m_index(index) {}

    reference operator*() const { return m_chunk->at(m_index); }
    pointer operator->() const { return &m_chunk->at(m_index); }
    const_iterator& operator++() {
      if (++m_index == m_chunk->size()) {
        ++m_chunk;
        m_index = 0;
      }
      return *this;
    }
    const_iterator operator++(int) {
      const const_iterator before = *this;
      ++*this;
      return before;
    }
    bool operator==(const const_iterator&) const = default;

   private:
    const QList<T>* m_chunk = nullptr;
    qsizetype m_index = 0;
  };

  ChunkedList() = default;
  // Implicit, so that a caller with a QList can hand it over as it is.
  ChunkedList(const QList<T>& records) {  // NOLINT(google-explicit-constructor)
    for (qsizetype first = 0; first < records.size(); first += chunkSize) {
      m_chunks.append(records.sliced(first, std::min(chunkSize, records.size() - first)));
    }
    m_size = records.size();
  }
  ChunkedList(std::initializer_list<T> records) : ChunkedList(QList<T>(records)) {}

  [[nodiscard]] QList<T> toList() const {
    QList<T> all;
    all.reserve(m_size);
    for (const QList<T>& chunk : m_chunks) all += chunk;
    return all;
  }

  [[nodiscard]] qsizetype size() const { return m_size; }
  [[nodiscard]] bool isEmpty() const { return m_size == 0; }

  [[nodiscard]] const T& at(qsizetype position) const {
    const Place place = placeOf(position);
    return m_chunks.at(place.chunk).at(place.index);
  }
  [[nodiscard]] const T& operator[](qsizetype position) const { return at(position); }
  [[nodiscard]] const T& front() const { return at(0); }

  [[nodiscard]] const_iterator begin() const { return const_iterator(m_chunks.constData()); }
  [[nodiscard]] const_iterator end() const {
    return const_iterator(m_chunks.constData() + m_chunks.size());
  }

  // end() for the position behind the last one.
  [[nodiscard]] const_iterator iteratorAt(qsizetype position) const {
    const Place place = placeOf(position);
    return const_iterator(m_chunks.constData() + place.chunk, place.index);
  }

  void append(const T& record) {
    if (m_chunks.isEmpty() || m_chunks.constLast().size() >= chunkSize) m_chunks.append(QList<T>());
    m_chunks.last().append(record);
    ++m_size;
  }

  void replace(qsizetype position, const T& record) {
    const Place place = placeOf(position);
    m_chunks[place.chunk].replace(place.index, record);
  }

  // `count` records from `first` on, all of which must be there.
  void remove(qsizetype first, qsizetype count) {
    Place place = placeOf(first);
    m_size -= count;
    while (count > 0) {
      QList<T>& chunk = m_chunks[place.chunk];
      const qsizetype here = std::min(count, chunk.size() - place.index);
      chunk.remove(place.index, here);
      count -= here;
      if (chunk.isEmpty()) {
        m_chunks.removeAt(place.chunk);
      } else {
        ++place.chunk;
      }
      place.index = 0;
    }
  }

  // Whether this is a copy of `other`, or the other way round, and neither has changed since.
  [[nodiscard]] bool isSharedWith(const ChunkedList& other) const {
    return m_chunks.isSharedWith(other.m_chunks);
  }

  bool operator==(const ChunkedList& other) const {
    if (m_size != other.m_size) return false;
    return isSharedWith(other) || std::equal(begin(), end(), other.begin());
  }

 private:
  struct Place {
    qsizetype chunk = 0;
    qsizetype index = 0;
  };

  [[nodiscard]] Place placeOf(qsizetype position) const {
    Place place{0, position};
    while (place.chunk < m_chunks.size() && place.index >= m_chunks.at(place.chunk).size()) {
      place.index -= m_chunks.at(place.chunk).size();
      ++place.chunk;
    }
    return place;
  }

  QList<QList<T>> m_chunks;  // none of them empty
  qsizetype m_size = 0;
};

}  // namespace zarvy
