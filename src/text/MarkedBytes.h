#pragma once

#include <QByteArrayView>
#include <bit>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

/// Walks over the bytes of an XML text that a reader has to look at: "<", ">", "&", controls, and all beyond ASCII.
class MarkedBytes {
public:
    explicit MarkedBytes(QByteArrayView bytes)
        : m_bytes(bytes)
    {
    }

    /// Where the next one stands, or the size of the text.
    qsizetype next()
    {
        while (m_marks == 0) {
            m_block += blockSize;
            if (m_block >= m_bytes.size())
                return m_bytes.size();
            m_marks = marksOfBlock();
        }
        const qsizetype at = m_block + std::countr_zero(m_marks);
        m_marks &= m_marks - 1;
        return at;
    }

private:
    static constexpr qsizetype blockSize = 64;

    quint64 marksOfBlock() const
    {
        const qsizetype left = m_bytes.size() - m_block;
        if (left >= blockSize)
            return marksOf(m_bytes.data() + m_block);
        char padded[blockSize];
        std::memset(padded, 'x', sizeof padded);
        std::memcpy(padded, m_bytes.data() + m_block, size_t(left));
        return marksOf(padded);
    }

    /// A bit for each byte of a block.
    static quint64 marksOf(const char *bytes)
    {
        quint64 marks = 0;
        for (qsizetype at = 0; at < blockSize; at += stepSize)
            marks |= quint64(marksOfStep(bytes + at)) << at;
        return marks;
    }

#ifdef __SSE2__
    static constexpr qsizetype stepSize = 16;
    static unsigned marksOfStep(const char *bytes)
    {
        const __m128i step = _mm_loadu_si128(reinterpret_cast<const __m128i *>(bytes));
        const auto is = [step](char wanted) { return _mm_cmpeq_epi8(step, _mm_set1_epi8(wanted)); };
        // Bytes are signed here: those beyond ASCII are below the blank like the controls.
        const __m128i others = _mm_cmplt_epi8(step, _mm_set1_epi8(' '));
        return unsigned(_mm_movemask_epi8(_mm_or_si128(_mm_or_si128(is('<'), is('>')), _mm_or_si128(is('&'), others))));
    }
#else
    static constexpr qsizetype stepSize = 1;
    static unsigned marksOfStep(const char *bytes)
    {
        const uchar byte = uchar(*bytes);
        return byte == '<' || byte == '>' || byte == '&' || byte < ' ' || byte >= 0x80;
    }
#endif

    QByteArrayView m_bytes;
    qsizetype m_block = -blockSize;
    quint64 m_marks = 0;
};
