#include "cloudprovider/CloudWriter.hpp"

#include "cloudprovider/TemporaryFile.hpp"

#include <ios>
#include <stdexcept>
#include <utility>

namespace storage::cloudprovider {

namespace {

void requireGood(const std::fstream& file) {
    if (!file) throw std::runtime_error("the temporary file can't be written; is the disk full?");
}

}  // namespace

CloudWriter::CloudWriter(std::shared_ptr<CloudClient> client, std::string key)
    : client_(std::move(client)), key_(std::move(key)), file_(openTemporaryFile()) {}

void CloudWriter::write(const char* bytes, std::size_t count) {
    requireOpen();
    file_.write(bytes, static_cast<std::streamsize>(count));
    requireGood(file_);
    size_ += count;
}

void CloudWriter::commit() {
    requireOpen();
    std::fstream content = std::exchange(file_, std::fstream());
    content.seekg(0);  // flushes, too
    requireGood(content);
    client_->upload(key_, content, size_);
}

void CloudWriter::requireOpen() const {
    if (!file_.is_open()) throw std::logic_error("the file has been committed");
}

}  // namespace storage::cloudprovider
