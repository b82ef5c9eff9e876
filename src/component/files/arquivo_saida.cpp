#include "component/files/arquivo_saida.hpp"

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
  std::setvbuf(arquivo_, nullptr, _IOFBF, 64 * 1024);
  return true;
}

bool ArquivoSaida::Escreve(std::string_view dados) {
  if (arquivo_ == nullptr) return false;
  return std::fwrite(dados.data(), 1, dados.size(), arquivo_) == dados.size() &&
         std::ferror(arquivo_) == 0;
}

bool ArquivoSaida::Fechar() {
  if (arquivo_ == nullptr) return false;
  const bool escrito = std::ferror(arquivo_) == 0;
  const bool fechado = std::fclose(arquivo_) == 0;
  arquivo_ = nullptr;
  return escrito && fechado;
}

}  // namespace quorv
