#include "KarvelPDFLibrary/index/BoundedData.h"

#include <qpdf/Pipeline.hh>
#include <qpdf/Pl_Flate.hh>
#include <qpdf/QPDF.hh>
#include <stdexcept>

namespace karvel::index {

namespace {

class BoundedPipeline final : public Pipeline {
public:
    explicit BoundedPipeline(std::size_t most) : Pipeline("bounded", nullptr), most_(most) {}

    void write(unsigned char const* data, size_t length) override
    {
        if (length > most_ - data_.size()) {
            isTooMuch_ = true;
            throw TooMuchData();
        }
        data_.append(reinterpret_cast<const char*>(data), length);
    }
    void finish() override {}

    bool isTooMuch() const { return isTooMuch_; }
    std::string take() { return std::move(data_); }

private:
    std::size_t most_;
    std::string data_;
    bool isTooMuch_ = false;
};

} // namespace

std::string boundedData(QPDFObjectHandle stream, std::size_t most)
{
    BoundedPipeline collect(most);
    // libqpdf reports a failure of the pipeline as a warning and false. Without the second argument
    // it would only tell whether it knows the filters.
    bool isDecoded = false;
    const bool isRead = stream.pipeStreamData(&collect, &isDecoded, 0, qpdf_dl_specialized);
    if (collect.isTooMuch()) {
        throw TooMuchData();
    }
    if (!isRead || !isDecoded) {
        throw std::length_error("a stream cannot be decoded within reason");
    }
    return collect.take();
}

namespace {

/// The same as of a stream, without the file in which one would have to stand.
std::string plainlyInflated(const std::string& packed, std::size_t most)
{
    BoundedPipeline collect(most);
    bool isUnusual = false;
    try {
        Pl_Flate inflate("inflate", &collect, Pl_Flate::a_inflate);
        inflate.setWarnCallback([&](char const*, int) { isUnusual = true; });
        inflate.write(reinterpret_cast<unsigned char const*>(packed.data()), packed.size());
        inflate.finish();
    } catch (const TooMuchData&) {
        throw;
    } catch (const std::exception&) {
        isUnusual = true;
    }
    if (isUnusual) {
        throw std::length_error("a stream is packed in an unusual way");
    }
    return collect.take();
}

} // namespace

std::string inflated(const std::string& packed, std::string_view parameters, std::size_t most)
{
    if (parameters.empty()) {
        return plainlyInflated(packed, most);
    }
    QPDF scratch;
    scratch.setSuppressWarnings(true);
    scratch.emptyPDF();
    QPDFObjectHandle stream = scratch.newStream(packed);
    stream.replaceDict(QPDFObjectHandle::parse("<< /Filter /FlateDecode /DecodeParms " +
                                               std::string(parameters) + " >>"));
    std::string data = boundedData(stream, most);
    if (scratch.anyWarnings()) {
        throw std::length_error("a stream is packed in an unusual way");
    }
    return data;
}

} // namespace karvel::index
