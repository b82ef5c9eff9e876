// Reading lines through a fixed buffer.
#include "component/files/leitor_linhas.hpp"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "arquivos.hpp"

namespace quorv {
namespace {

struct Lida {
  std::string texto;
  std::uint64_t comprimento;
  bool operator==(const Lida& outra) const {
    return texto == outra.texto && comprimento == outra.comprimento;
  }
};

std::vector<Lida> LeTudo(const std::string& bytes, std::uint64_t* consumidos = nullptr) {
  teste::DiretorioTemporario diretorio;
  const std::string caminho = diretorio.Arquivo("linhas.txt");
  teste::GravaBytes(caminho, bytes);
  LeitorLinhas leitor;
  EXPECT_TRUE(leitor.Abrir(caminho));
  EXPECT_EQ(leitor.Tamanho(), bytes.size());
  std::vector<Lida> lidas;
  Linha linha;
  while (leitor.Proxima(linha))
    lidas.push_back({std::string(linha.texto), linha.comprimento});
  EXPECT_TRUE(leitor.Fim());
  if (consumidos != nullptr) *consumidos = leitor.Consumidos();
  return lidas;
}

TEST(LeitorLinhas, TerminaLinhasEmCRLFOuLF) {
  EXPECT_EQ(LeTudo("a\r\nbc\nd"), (std::vector<Lida>{{"a", 1}, {"bc", 2}, {"d", 1}}));
}

TEST(LeitorLinhas, CRSozinhoPertenceALinha) {
  EXPECT_EQ(LeTudo("a\rb\r\n\r"), (std::vector<Lida>{{"a\rb", 3}, {"\r", 1}}));
}

TEST(LeitorLinhas, LinhaVaziaNoFim) {
  EXPECT_EQ(LeTudo("a\r\n\r\n"), (std::vector<Lida>{{"a", 1}, {"", 0}}));
}

TEST(LeitorLinhas, ArquivoVazioNaoTemLinhas) {
  EXPECT_TRUE(LeTudo("").empty());
}

TEST(LeitorLinhas, ContaOsBytesConsumidos) {
  std::uint64_t consumidos = 0;
  LeTudo("abc\r\nde\n", &consumidos);
  EXPECT_EQ(consumidos, 8u);
}

TEST(LeitorLinhas, LinhaMaiorQueOBufferGuardaOComecoEContaTudo) {
  const std::string longa = std::string(LeitorLinhas::kBuffer * 3 + 17, 'x') + "\r";
  const auto lidas = LeTudo("ab\n" + longa + "\ncd");
  ASSERT_EQ(lidas.size(), 3u);
  EXPECT_EQ(lidas[1].texto, std::string(LeitorLinhas::kGuardado, 'x'));
  EXPECT_EQ(lidas[1].comprimento, longa.size() - 1);
  EXPECT_EQ(lidas[2], (Lida{"cd", 2}));
}

TEST(LeitorLinhas, LinhasQueAtravessamOBuffer) {
  std::string bytes;
  std::vector<Lida> esperado;
  for (int i = 0; i < 2000; ++i) {
    const std::string linha(static_cast<std::size_t>(100 + i % 97),
                            static_cast<char>('a' + i % 26));
    bytes += linha + "\r\n";
    esperado.push_back({linha, linha.size()});
  }
  EXPECT_EQ(LeTudo(bytes), esperado);
}

// A reader with a limit gives up on a line that runs past it: the line's head, a length above
// the limit, and the end of the file, however long the line really is.
TEST(LeitorLinhas, LinhaAlemDoLimiteEncerraOArquivo) {
  teste::DiretorioTemporario diretorio;
  const std::string caminho = diretorio.Arquivo("linhas.txt");
  teste::GravaBytes(caminho, "abcd\r\n" + std::string(LeitorLinhas::kBuffer * 4, 'x') + "\nfim\n");
  LeitorLinhas leitor;
  ASSERT_TRUE(leitor.Abrir(caminho, 4));
  Linha linha;
  ASSERT_TRUE(leitor.Proxima(linha));
  EXPECT_EQ(linha.texto, "abcd");
  EXPECT_EQ(linha.comprimento, 4u);
  ASSERT_TRUE(leitor.Proxima(linha));
  EXPECT_GT(linha.comprimento, 4u);
  EXPECT_EQ(linha.texto.substr(0, 8), "xxxxxxxx");
  EXPECT_TRUE(leitor.Fim());
  EXPECT_FALSE(leitor.Proxima(linha));
}

// A line at the limit, its CR LF included, is read as any other; so is a longer line whose end
// is already in view.
TEST(LeitorLinhas, LinhaNoLimiteComCRLF) {
  teste::DiretorioTemporario diretorio;
  const std::string caminho = diretorio.Arquivo("linhas.txt");
  teste::GravaBytes(caminho, "abcd\r\nefghi\r\nxy");
  LeitorLinhas leitor;
  ASSERT_TRUE(leitor.Abrir(caminho, 4));
  Linha linha;
  ASSERT_TRUE(leitor.Proxima(linha));
  EXPECT_EQ(linha.comprimento, 4u);
  ASSERT_TRUE(leitor.Proxima(linha));
  EXPECT_EQ(linha.texto, "efghi");
  EXPECT_EQ(linha.comprimento, 5u);
  ASSERT_TRUE(leitor.Proxima(linha));
  EXPECT_EQ(linha.texto, "xy");
}

TEST(LeitorLinhas, NaoAbreDiretorioNemArquivoInexistente) {
  teste::DiretorioTemporario diretorio;
  LeitorLinhas leitor;
  EXPECT_FALSE(leitor.Abrir(diretorio.Texto()));
  EXPECT_FALSE(leitor.Abrir(diretorio.Arquivo("nao-existe")));
  EXPECT_FALSE(leitor.Abrir(""));
  EXPECT_TRUE(leitor.Fim());
}

}  // namespace
}  // namespace quorv
