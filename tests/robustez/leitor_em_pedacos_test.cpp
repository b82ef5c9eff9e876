// Reading a line piece by piece gives the same bytes as reading it whole, wherever its line end
// falls in the reader's buffer: a CR belongs to the line end only right before an LF.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "arquivos.hpp"
#include "component/files/leitor_linhas.hpp"

namespace quorv::teste {
namespace {

constexpr std::size_t kBuffer = LeitorLinhas::kBuffer;

// Every line of the file, each made of the pieces handed over.
std::vector<std::string> LinhasEmPedacos(const std::string& caminho) {
  LeitorLinhas leitor;
  EXPECT_TRUE(leitor.Abrir(caminho));
  std::vector<std::string> linhas;
  std::string linha;
  while (leitor.ProximaEmPedacos([&](std::string_view pedaco) {
    EXPECT_FALSE(pedaco.empty());
    linha += pedaco;
  })) {
    linhas.push_back(linha);
    linha.clear();
  }
  return linhas;
}

struct CasoPedacos {
  const char* nome;
  std::string bytes;
  std::vector<std::string> linhas;
};

std::vector<CasoPedacos> Casos() {
  const std::string cheia(kBuffer - 1, 'a');
  const std::string longa(3 * kBuffer + 17, 'b');
  return {
      {"Vazio", "", {}},
      {"SoLF", "\n", {""}},
      {"CRLFEntreLinhas", "ab\r\ncd\r\n", {"ab", "cd"}},
      {"LFSozinho", "ab\ncd", {"ab", "cd"}},
      {"CRSozinhoNaoTerminaALinha", "ab\rcd\r\n", {"ab\rcd"}},
      {"CRNoFimSemLFFica", "ab\r", {"ab\r"}},
      {"DoisCRAntesDoLF", "ab\r\r\n", {"ab\r"}},
      // The CR is the buffer's last byte and its LF the first of the next filling.
      {"CRLFNaDivisaDoBuffer", cheia + "\r\n" + "fim", {cheia, "fim"}},
      {"CRSemLFNaDivisaDoBuffer", cheia + "\rx\n", {cheia + "\rx"}},
      {"CRNaDivisaEFimDoArquivo", cheia + "\r", {cheia + "\r"}},
      {"LinhaMaiorQueOBuffer", longa + "\r\n" + longa, {longa, longa}},
      {"LinhaMaiorQueOBufferSoComCR", longa + "\r" + longa, {longa + "\r" + longa}},
  };
}

class LeituraEmPedacos : public ::testing::TestWithParam<CasoPedacos> {};

TEST_P(LeituraEmPedacos, DaAsMesmasLinhasQueALeituraInteira) {
  DiretorioTemporario diretorio;
  const std::string caminho = diretorio.Arquivo("linhas.txt");
  GravaBytes(caminho, GetParam().bytes);
  EXPECT_EQ(LinhasEmPedacos(caminho), GetParam().linhas);

  // Read whole, a line has the same length, and its bytes or, past the buffer's room, its head.
  LeitorLinhas leitor;
  ASSERT_TRUE(leitor.Abrir(caminho));
  Linha linha;
  for (const std::string& esperada : GetParam().linhas) {
    ASSERT_TRUE(leitor.Proxima(linha));
    EXPECT_EQ(linha.comprimento, esperada.size());
    EXPECT_EQ(linha.texto, std::string_view(esperada).substr(0, linha.texto.size()));
  }
  EXPECT_FALSE(leitor.Proxima(linha));
}

INSTANTIATE_TEST_SUITE_P(Robustez, LeituraEmPedacos, ::testing::ValuesIn(Casos()),
                         [](const ::testing::TestParamInfo<CasoPedacos>& info) {
                           return info.param.nome;
                         });

}  // namespace
}  // namespace quorv::teste
