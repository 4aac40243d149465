#pragma once

#include <functional>
#include <memory>
#include <string>

#include <zip.h>

#include "workbooks/writers/ScratchText.h"

namespace excel {

/// The content of a part as the zip library asks for it, so that it need not stand in memory.
class ZipSource
{
public:
    ZipSource() = default;
    virtual ~ZipSource() = default;
    ZipSource(const ZipSource&) = delete;
    ZipSource& operator=(const ZipSource&) = delete;

    /// The source for an archive, which frees it with the content; null if there is no memory.
    static zip_source_t* make(zip_t* archive, std::unique_ptr<ZipSource> content);

protected:
    /// In bytes. The first question of a round; the last one is `close`.
    virtual size_t size() = 0;
    /// Goes back to the begin; false if the content is lost.
    virtual bool open() = 0;
    /// As much as follows in one piece, 0 at the end or if no more can be read.
    virtual size_t read(char* data, size_t length) = 0;
    virtual void close() {}

private:
    static zip_int64_t answer(void* source, void* data, zip_uint64_t length,
                              zip_source_cmd_t command);
    zip_int64_t answer(void* data, zip_uint64_t length, zip_source_cmd_t command);
    zip_int64_t begin();
    zip_int64_t next(char* data, size_t length);
    zip_int64_t tell(zip_stat_t* stat);

    size_t m_place = 0;
    zip_error_t m_error{};
};

/// Rows between the two halves of their page.
class PageSource : public ZipSource
{
public:
    PageSource(std::string head, ScratchText& rows, std::string tail)
        : m_head(std::move(head)), m_rows(rows), m_tail(std::move(tail))
    {
    }

protected:
    size_t size() override { return m_head.size() + m_rows.size() + m_tail.size(); }
    bool open() override;
    size_t read(char* data, size_t length) override;

private:
    std::string m_head;
    ScratchText& m_rows;
    std::string m_tail;
    size_t m_place = 0; // in all of it
};

/// A text that is made when it is asked for and given up when it was read.
class TextSource : public ZipSource
{
public:
    explicit TextSource(std::function<std::string()> make) : m_make(std::move(make)) {}

protected:
    size_t size() override;
    bool open() override;
    size_t read(char* data, size_t length) override;
    void close() override { m_text = {}; }

private:
    std::function<std::string()> m_make;
    std::string m_text;
    size_t m_place = 0;
};

} // namespace excel
