#include "hostkit/openfx/host.h"

#include "hostkit/error.h"
#include "hostkit/module_loader.h"
#include "hostkit/openfx/objects.h"
#include "hostkit/openfx/suites.h"

namespace hostkit {
namespace {

thread_local std::string lent;

const void* fetchSuite(OfxPropertySetHandle description, const char* name, int version) {
  const HostManners& manners = description->host->manners;
  const std::string suite = name;
  if (manners.lacksMessages && suite == kOfxMessageSuite) return nullptr;
  if (manners.lacksParameters && suite == kOfxParameterSuite) return nullptr;
  return openFxSuite(name, version);
}

}  // namespace

OpenFxHost::OpenFxHost() : description_(new OfxPropertySetStruct(*this, "host")) {
  description_->has(kOfxPropName, {std::string("org.brisel.hostkit")});
  description_->has(kOfxParamHostBooleanAnimation, {1});
  description_->has(kOfxParamHostChoiceAnimation, {1});
  record_ = {description_.get(), fetchSuite};
}

OpenFxHost::~OpenFxHost() = default;

void OpenFxHost::complain(const std::string& fault) {
  const std::scoped_lock lock(mutex_);
  complaints_.push_back(fault);
}

std::vector<std::string> OpenFxHost::complaints() const {
  const std::scoped_lock lock(mutex_);
  return complaints_;
}

bool OpenFxHost::failsNow() {
  lent.assign(lent.size(), '?');
  const int call = ++calls_;
  const int every = manners.failsEvery;
  return (every > 0 && call % every == 0) || call == failingCall_;
}

char* lentText(const std::string& text) {
  lent = text;
  return lent.data();
}

OpenFxBinary::OpenFxBinary(const std::filesystem::path& file) : library_(openLibrary(file)) {
  const auto count = reinterpret_cast<int (*)()>(findSymbol(library_, "OfxGetNumberOfPlugins"));
  get_ = reinterpret_cast<OfxPlugin* (*)(int)>(findSymbol(library_, "OfxGetPlugin"));
  if (count == nullptr || get_ == nullptr) {
    closeLibrary(library_);
    throw Error("the plug-in does not export what OpenFX hosts look for");
  }
  count_ = count();
}

OpenFxBinary::~OpenFxBinary() {
  closeLibrary(library_);
}

}  // namespace hostkit
