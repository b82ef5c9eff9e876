#include "component/files/arquivo_saida.hpp"

#include <cstring>

#include "component/files/caminhos.hpp"

namespace quorv {

ArquivoSaida::~ArquivoSaida() {
  Fechar();
}

bool ArquivoSaida::Criar(std::string_view caminhoUtf8) {
  Fechar();
  if (caminhoUtf8.empty()) return false;
  const std::filesystem::path caminho = caminhos::Caminho(caminhoUtf8);
#ifdef _WIN32
  arquivo_ = _wfopen(caminho.c_str(), L"wb");
#else
  arquivo_ = std::fopen(caminho.c_str(), "wb");
#endif
  if (arquivo_ == nullptr) return false;
  // The file's own buffering is left out: whole buffers of this object go to it.
  std::setvbuf(arquivo_, nullptr, _IONBF, 0);
  if (!buffer_) buffer_.reset(new char[kBuffer]);
  usados_ = 0;
  falhou_ = false;
  return true;
}

bool ArquivoSaida::Esvazia() {
  if (usados_ > 0 && std::fwrite(buffer_.get(), 1, usados_, arquivo_) != usados_) falhou_ = true;
  usados_ = 0;
  return !falhou_;
}

bool ArquivoSaida::Escreve(std::string_view dados) {
  if (arquivo_ == nullptr) return false;
  if (dados.size() > kBuffer - usados_) {
    Esvazia();
    // A piece as large as the buffer goes to the file at once.
    if (dados.size() >= kBuffer) {
      if (std::fwrite(dados.data(), 1, dados.size(), arquivo_) != dados.size()) falhou_ = true;
      return !falhou_;
    }
  }
  std::memcpy(buffer_.get() + usados_, dados.data(), dados.size());
  usados_ += dados.size();
  return !falhou_;
}

bool ArquivoSaida::Fechar() {
  if (arquivo_ == nullptr) return false;
  const bool escrito = Esvazia() && std::ferror(arquivo_) == 0;
  const bool fechado = std::fclose(arquivo_) == 0;
  arquivo_ = nullptr;
  if (!escrito || !fechado) falhou_ = true;
  return escrito && fechado;
}

}  // namespace quorv
