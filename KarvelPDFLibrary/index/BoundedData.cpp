#include "KarvelPDFLibrary/index/BoundedData.h"

#include <qpdf/Pipeline.hh>
#include <stdexcept>

namespace karvel::index {

namespace {

class BoundedPipeline final : public Pipeline {
public:
    explicit BoundedPipeline(std::size_t most) : Pipeline("bounded", nullptr), most_(most) {}

    void write(unsigned char const* data, size_t length) override
    {
        if (length > most_ - data_.size()) {
            throw std::length_error("a stream decodes to more data than is reasonable");
        }
        data_.append(reinterpret_cast<const char*>(data), length);
    }
    void finish() override {}

    std::string take() { return std::move(data_); }

private:
    std::size_t most_;
    std::string data_;
};

} // namespace

std::string boundedData(QPDFObjectHandle stream, std::size_t most)
{
    BoundedPipeline collect(most);
    // libqpdf reports a failure of the pipeline as a warning and false. Without the second argument
    // it would only tell whether it knows the filters.
    bool isDecoded = false;
    if (!stream.pipeStreamData(&collect, &isDecoded, 0, qpdf_dl_specialized) || !isDecoded) {
        throw std::length_error("a stream cannot be decoded within reason");
    }
    return collect.take();
}

} // namespace karvel::index
