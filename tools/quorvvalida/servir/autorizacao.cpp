#include "autorizacao.hpp"

#include <strings.h>

#include <fstream>
#include <string_view>

#include <openssl/crypto.h>
#include <openssl/sha.h>

namespace quorv::servico {
namespace {

std::array<unsigned char, 32> Resumo(const std::string& texto) {
  std::array<unsigned char, 32> resumo{};
  SHA256(reinterpret_cast<const unsigned char*>(texto.data()), texto.size(), resumo.data());
  return resumo;
}

}  // namespace

Autorizacao::Autorizacao(const std::string& token) : resumo_(Resumo(token)) {}

std::optional<Autorizacao> Autorizacao::DoArquivo(const std::string& caminho, std::string& erro) {
  std::ifstream arquivo(caminho, std::ios::binary);
  std::string linha;
  if (!arquivo || !std::getline(arquivo, linha)) {
    erro = "não foi possível ler o token de " + caminho;
    return std::nullopt;
  }
  const auto inicio = linha.find_first_not_of(" \t\r");
  if (inicio == std::string::npos) {
    erro = "o arquivo de token está vazio: " + caminho;
    return std::nullopt;
  }
  const std::string token = linha.substr(inicio, linha.find_last_not_of(" \t\r") - inicio + 1);
  return Autorizacao(token);
}

Autorizacao::Resultado Autorizacao::Confere(const std::string& cabecalho) const {
  // The scheme's name is case-insensitive.
  constexpr std::string_view kPrefixo = "bearer ";
  if (cabecalho.size() <= kPrefixo.size() ||
      ::strncasecmp(cabecalho.c_str(), kPrefixo.data(), kPrefixo.size()) != 0) {
    return Resultado::kAusente;
  }
  // Both sides are hashed first, so the comparison runs over the same 32 bytes whatever the
  // length of what the client sent.
  const std::array<unsigned char, 32> recebido = Resumo(cabecalho.substr(kPrefixo.size()));
  return CRYPTO_memcmp(recebido.data(), resumo_.data(), resumo_.size()) == 0 ? Resultado::kAceito
                                                                             : Resultado::kRecusado;
}

}  // namespace quorv::servico
