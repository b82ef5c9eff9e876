// FileUtility: the path helpers. The path and the flags are passed by reference, but no member
// changes them.
#include "quorvvalida/file_utility.hpp"
#include "QuorvValida.h"
#include "classes.hpp"
#include "objeto.hpp"
#include "texto.hpp"

namespace quorv::com {
namespace {

class FileUtilityCom final : public Automacao<_FileUtility> {
 public:
  FileUtilityCom() : Automacao(IID__FileUtility, CLSID_FileUtility) {}

  HRESULT STDMETHODCALLTYPE GetDrive(BSTR* sArquivoRemessa, BSTR* resultado) override {
    return Texto(sArquivoRemessa, resultado,
                 [&](const std::string& caminho) { return utilitario_.GetDrive(caminho); });
  }

  HRESULT STDMETHODCALLTYPE GetFileName(BSTR* sArquivoRemessa, VARIANT_BOOL* bWithExtension,
                                        BSTR* resultado) override {
    const bool comExtensao = bWithExtension != nullptr && *bWithExtension != VARIANT_FALSE;
    return Texto(sArquivoRemessa, resultado, [&](const std::string& caminho) {
      return utilitario_.GetFileName(caminho, comExtensao);
    });
  }

  HRESULT STDMETHODCALLTYPE GetFileExtension(BSTR* sArquivoRemessa, BSTR* resultado) override {
    return Texto(sArquivoRemessa, resultado,
                 [&](const std::string& caminho) { return utilitario_.GetFileExtension(caminho); });
  }

  HRESULT STDMETHODCALLTYPE GetPath(BSTR* sArquivoRemessa, VARIANT_BOOL* bWithDevice,
                                    BSTR* resultado) override {
    const bool comUnidade = bWithDevice != nullptr && *bWithDevice != VARIANT_FALSE;
    return Texto(sArquivoRemessa, resultado, [&](const std::string& caminho) {
      return utilitario_.GetPath(caminho, comUnidade);
    });
  }

  HRESULT STDMETHODCALLTYPE FileExists(BSTR* sArquivoRemessa, VARIANT_BOOL* resultado) override {
    if (sArquivoRemessa == nullptr) return E_POINTER;
    return Logico(resultado, [&] { return utilitario_.FileExists(Utf8(*sArquivoRemessa)); });
  }

 private:
  template <class Operacao>
  static HRESULT Texto(BSTR* sArquivoRemessa, BSTR* resultado, Operacao&& operacao) {
    if (sArquivoRemessa == nullptr) return E_POINTER;
    return quorv::com::Texto(resultado, [&] { return operacao(Utf8(*sArquivoRemessa)); });
  }

  quorv::FileUtility utilitario_;
};

}  // namespace

HRESULT CriaFileUtility(REFIID iid, void** objeto) {
  return Cria<FileUtilityCom>(iid, objeto);
}

}  // namespace quorv::com
