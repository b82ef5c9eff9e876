#include "robustez.hpp"

#include <fstream>
#include <system_error>

#include <gtest/gtest.h>

#include "arquivo_fichas.hpp"
#include "arquivo_notas.hpp"
#include "arquivos.hpp"

namespace quorv::teste {

Retrato Fotografa(const std::string& caminho) {
  Retrato retrato;
  const std::filesystem::path arquivo = std::filesystem::u8path(caminho);
  std::error_code erro;
  if (!std::filesystem::is_regular_file(arquivo, erro)) return retrato;
  retrato.existe = true;
  retrato.tamanho = std::filesystem::file_size(arquivo, erro);
  retrato.alterado = std::filesystem::last_write_time(arquivo, erro);
  std::ifstream entrada(arquivo, std::ios::binary);
  retrato.bytes.resize(Retrato::kLimite);
  entrada.read(retrato.bytes.data(), static_cast<std::streamsize>(retrato.bytes.size()));
  retrato.bytes.resize(static_cast<std::size_t>(entrada.gcount()));
  return retrato;
}

const std::string& Entradas::Registra(const std::string& caminho) {
  arquivos_.emplace_back(caminho, Fotografa(caminho));
  return arquivos_.back().first;
}

const std::string& Entradas::Grava(const std::string& caminho, std::string_view bytes) {
  GravaBytes(caminho, bytes);
  return Registra(caminho);
}

void Entradas::Confere() const {
  for (const auto& [caminho, antes] : arquivos_) {
    EXPECT_TRUE(antes.existe) << caminho;
    EXPECT_EQ(Fotografa(caminho), antes) << caminho;
  }
}

std::string BytesAltos(std::size_t n, unsigned inicio) {
  std::string bytes(n, ' ');
  for (std::size_t i = 0; i < n; ++i) {
    bytes[i] = static_cast<char>(128 + (inicio + i) % 128);
  }
  return bytes;
}

bool EscritaRecusada(const std::filesystem::path& diretorio) {
  const std::filesystem::path sonda = diretorio / "sonda";
  std::ofstream saida(sonda);
  if (saida.is_open()) {
    saida.close();
    std::error_code erro;
    std::filesystem::remove(sonda, erro);
    return false;
  }
  return true;
}

std::string DispositivoCheio() {
#ifdef __linux__
  std::error_code erro;
  if (std::filesystem::is_character_file("/dev/full", erro)) return "/dev/full";
#endif
  return {};
}

std::vector<std::string> NotasComItensAntesDaNota(int itens) {
  ArquivoNotas arquivo;
  arquivo.CabecalhoV1();
  arquivo.TR01();
  for (int i = 0; i < itens; ++i)
    arquivo.Novo("15");
  arquivo.TR10Valido();
  arquivo.Novo("15");
  arquivo.TR98();
  arquivo.TR99();
  return arquivo.Linhas();
}

std::vector<std::string> FichasComRegistrosForaDeSolicitacao(int registros) {
  ArquivoFichas arquivo;
  arquivo.Cabecalho();
  for (int i = 0; i < registros; ++i)
    arquivo.Novo("196");
  arquivo.Trailer();
  return arquivo.Linhas();
}

}  // namespace quorv::teste
