// Producer-invoice files that are not what they should be: empty, binary, of wrong lengths and
// line ends, with bytes above 127, in places that cannot be used. Every case compares the status
// and the exact warnings file, and shows that the input file was only read.
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "robustez.hpp"
#include "teste_notas.hpp"

namespace quorv::teste {
namespace {

class EntradasNotas : public TesteNotas {
 protected:
  void TearDown() override {
    entradas.Confere();
    TesteNotas::TearDown();
  }

  // Validates the bytes written as the input file, with the default optional arguments.
  int16_t ValidaBytes(std::string_view bytes) {
    return validacao.Valida_Dados(entradas.Grava(diretorio.Arquivo("remessa.txt"), bytes),
                                  numeroRemessa, diretorio.Texto());
  }

  // The lines of the file built so far, each ended by CR LF.
  std::string Bytes() const { return JuntaLinhas(arquivo.Linhas()); }

  // A whole file that the run accepts: header, one group with its note and item, trailer.
  void ArquivoLimpo() {
    arquivo.CabecalhoV1();
    arquivo.TR01();
    arquivo.TR10Valido();
    arquivo.Novo("15");
    arquivo.TR98();
    arquivo.TR99();
  }

  // The warnings file of one warning.
  static std::string Uma(int codigo, std::string_view registro, std::string_view numero) {
    return Advertencias().Linha(codigo, registro, numero).Texto();
  }

  // The record as the warning copies it: cut or padded with blanks to 160 bytes.
  static std::string Copiada(std::string_view linha) {
    std::string copia(linha.substr(0, kLarguraNotas));
    copia.resize(kLarguraNotas, ' ');
    return copia;
  }

  Entradas entradas;
};

TEST_F(EntradasNotas, ArquivoVazioNaoTemLinhaDeTamanhoCerto) {
  EXPECT_EQ(ValidaBytes(""), 8);
  // Nothing was read: the warning carries the blank line and its blank sequence columns.
  EXPECT_EQ(Gravadas(), Uma(77, std::string(160, ' '), "        "));
}

TEST_F(EntradasNotas, ArquivoDeUmByte) {
  struct Caso {
    std::string bytes;
    std::string numero;
  };
  // A sequence that is not a number is written as it stands; one that is gets its zeros.
  const std::vector<Caso> casos = {
      {"A", "A       "}, {"7", "00000007"}, {"\n", "        "}, {"\x80", "\x80       "}};
  for (const Caso& caso : casos) {
    DiretorioTemporario outro;
    Entradas umByte;
    const std::string caminho = umByte.Grava(outro.Arquivo("um-byte.txt"), caso.bytes);
    Validacao v;
    std::string numero = "antes";
    EXPECT_EQ(v.Valida_Dados(caminho, numero, outro.Texto()), 8);
    const std::string linha = caso.bytes == "\n" ? "" : caso.bytes;
    EXPECT_EQ(LeBytes(outro.Advertencias()), Uma(77, Copiada(linha), caso.numero));
    EXPECT_EQ(numero, "antes");
    umByte.Confere();
  }
}

TEST_F(EntradasNotas, LinhasDeBytesNulosTemSequenciaErrada) {
  const std::string nulos(160, '\0');
  // Two lines of 160 NUL bytes with CR LF: length and file size pass, the sequence does not.
  EXPECT_EQ(ValidaBytes(nulos + "\r\n" + nulos + "\r\n"), 8);
  EXPECT_EQ(Gravadas(), Uma(166, nulos, "00000001"));
}

TEST_F(EntradasNotas, ArquivoBinarioECopiadoByteAByte) {
  std::string binario;
  for (int i = 0; i < 512; ++i)
    binario += static_cast<char>(i % 256);
  // The first line ends at the first LF, the eleventh byte: ten bytes, NUL among them.
  EXPECT_EQ(ValidaBytes(binario), 8);
  EXPECT_EQ(Gravadas(), Uma(77, Copiada(binario.substr(0, 10)), binario.substr(0, 8)));
}

class TamanhoDaPrimeiraLinha : public EntradasNotas,
                               public ::testing::WithParamInterface<std::size_t> {};

TEST_P(TamanhoDaPrimeiraLinha, ParaAntesDoTamanhoDoArquivo) {
  ArquivoLimpo();
  const std::string primeira = arquivo.Linha(0).ComLargura(GetParam());
  arquivo.Linha(0) = Registro(GetParam());
  arquivo.Linha(0).Campo(1, static_cast<int>(GetParam()), primeira);
  EXPECT_EQ(ValidaBytes(Bytes()), 8);
  EXPECT_EQ(Gravadas(), Uma(77, Copiada(primeira), "00000001"));
}

INSTANTIATE_TEST_SUITE_P(EntradasNotas, TamanhoDaPrimeiraLinha,
                         ::testing::Values(159u, 161u, 100000u));

class TamanhoDeUmaLinhaDoMeio : public EntradasNotas,
                                public ::testing::WithParamInterface<std::size_t> {};

// A line of another length makes the file's size no multiple of 162 bytes, which the first line
// already tells.
TEST_P(TamanhoDeUmaLinhaDoMeio, ArquivoEmFormatoInvalidoNaPrimeiraLinha) {
  ArquivoLimpo();
  const std::string nota = arquivo.Linha(2).ComLargura(GetParam());
  arquivo.Linha(2) = Registro(GetParam());
  arquivo.Linha(2).Campo(1, static_cast<int>(GetParam()), nota);
  EXPECT_EQ(ValidaBytes(Bytes()), 8);
  EXPECT_EQ(Gravadas(), Uma(76, arquivo.Linha(0).Texto(), "00000001"));
}

INSTANTIATE_TEST_SUITE_P(EntradasNotas, TamanhoDeUmaLinhaDoMeio,
                         ::testing::Values(159u, 161u, 100000u));

TEST_F(EntradasNotas, FimDeLinhaSoLF) {
  ArquivoLimpo();
  EXPECT_EQ(ValidaBytes(JuntaLinhas(arquivo.Linhas(), "\n")), 8);
  EXPECT_EQ(Gravadas(), Uma(76, arquivo.Linha(0).Texto(), "00000001"));
}

TEST_F(EntradasNotas, FimDeLinhaSoCRFazUmaLinhaSo) {
  ArquivoLimpo();
  EXPECT_EQ(ValidaBytes(JuntaLinhas(arquivo.Linhas(), "\r")), 8);
  EXPECT_EQ(Gravadas(), Uma(77, arquivo.Linha(0).Texto(), "00000001"));
}

TEST_F(EntradasNotas, FinsDeLinhaMisturados) {
  // CR LF, LF alone, and a line of 161 characters with CR LF: 162 + 161 + 163 bytes, so the file
  // size passes; the line ended by LF alone is a line of 160 characters.
  const Registro& cabecalho = arquivo.CabecalhoV1();
  const Registro& abertura = arquivo.TR01();
  const std::string nota = arquivo.TR10Valido().ComLargura(161);
  EXPECT_EQ(ValidaBytes(cabecalho.Texto() + "\r\n" + abertura.Texto() + "\n" + nota + "\r\n"), 8);
  EXPECT_EQ(Gravadas(), Uma(77, Copiada(nota), "00000003"));
}

TEST_F(EntradasNotas, LinhaVaziaNoFim) {
  ArquivoLimpo();
  EXPECT_EQ(ValidaBytes(Bytes() + "\r\n"), 8);
  EXPECT_EQ(Gravadas(), Uma(76, arquivo.Linha(0).Texto(), "00000001"));
}

TEST_F(EntradasNotas, BytesAltosEmTodosOsCamposDoCabecalho) {
  // Every column after the record type holds bytes above 127, but for the version, which still
  // starts with the number 1 so that the version-1 header check runs.
  Registro& cabecalho = arquivo.Novo("00");
  cabecalho.Campo(11, 150, BytesAltos(150)).Campo(74, 3, "1.0");
  numeroRemessa = "antes";
  EXPECT_EQ(ValidaBytes(Bytes()), 8);
  Advertencias esperado;
  for (int codigo : {104, 93, 68, 71, 70})
    esperado.Linha(codigo, cabecalho.Texto(), "00000001");
  EXPECT_EQ(Gravadas(), esperado.Texto());
  EXPECT_EQ(numeroRemessa, "antes");
}

TEST_F(EntradasNotas, BytesAltosNumRegistroDeItens) {
  // An item record is accepted as it comes; the one out of place is copied byte for byte.
  arquivo.CabecalhoV1();
  arquivo.TR01();
  Registro& item = arquivo.Novo("15");
  item.Campo(11, 150, BytesAltos(150, 7));
  arquivo.TR10Valido();
  arquivo.Novo("15");
  arquivo.TR98();
  arquivo.TR99();
  EXPECT_EQ(ValidaBytes(Bytes()), 1);
  EXPECT_EQ(Gravadas(), Uma(153, item.Texto(), "00000003"));
  EXPECT_EQ(numeroRemessa, "000001");
}

struct CasoMoldura {
  const char* nome;
  std::size_t linha;  // 0-based line of the file changed
  int coluna;
  int largura;
  std::string valor;
  int codigo;
};

class MolduraComBytesEstranhos : public EntradasNotas,
                                 public ::testing::WithParamInterface<CasoMoldura> {};

// A sequence or a record type that is not what it should be stops the run at the line counter.
TEST_P(MolduraComBytesEstranhos, ParaNoContador) {
  const CasoMoldura& caso = GetParam();
  ArquivoLimpo();
  Registro& registro = arquivo.Linha(caso.linha);
  registro.Campo(caso.coluna, caso.largura, caso.valor);
  EXPECT_EQ(ValidaBytes(Bytes()), 8);
  char numero[32];
  std::snprintf(numero, sizeof numero, "%08zu", caso.linha + 1);
  EXPECT_EQ(Gravadas(), Uma(caso.codigo, registro.Texto(), numero));
}

INSTANTIATE_TEST_SUITE_P(
    EntradasNotas, MolduraComBytesEstranhos,
    ::testing::Values(CasoMoldura{"SequenciaAltaNaPrimeira", 0, 1, 8, BytesAltos(8), 166},
                      CasoMoldura{"SequenciaAltaNaTerceira", 2, 1, 8, BytesAltos(8, 9), 166},
                      CasoMoldura{"SequenciaComLetraNaPrimeira", 0, 1, 8, "0000000I", 166},
                      CasoMoldura{"SequenciaComLetraNaTerceira", 2, 1, 8, "0000003X", 166},
                      CasoMoldura{"SequenciaComLetraNaFrente", 2, 1, 8, "X0000003", 166},
                      CasoMoldura{"TipoAltoNaPrimeira", 0, 9, 2, BytesAltos(2), 86},
                      CasoMoldura{"TipoAltoNaTerceira", 2, 9, 2, BytesAltos(2, 40), 78}),
    [](const ::testing::TestParamInfo<CasoMoldura>& info) { return info.param.nome; });

TEST_F(EntradasNotas, ArquivoQueEDiretorio) {
  GravaBytes(diretorio.Advertencias(), "antiga\r\n");
  const std::string pasta = diretorio.Arquivo("pasta.txt");
  std::filesystem::create_directory(std::filesystem::u8path(pasta));
  numeroRemessa = "antes";
  EXPECT_EQ(validacao.Valida_Dados(pasta, numeroRemessa, diretorio.Texto()), 9);
  // The finish step ran with nothing written: the old warnings file is gone.
  EXPECT_FALSE(diretorio.TemAdvertencias());
  EXPECT_TRUE(std::filesystem::is_directory(std::filesystem::u8path(pasta)));
  EXPECT_EQ(numeroRemessa, "antes");
}

TEST_F(EntradasNotas, ArquivoInexistente) {
  GravaBytes(diretorio.Advertencias(), "antiga\r\n");
  EXPECT_EQ(
      validacao.Valida_Dados(diretorio.Arquivo("nao-existe.txt"), numeroRemessa, diretorio.Texto()),
      9);
  EXPECT_FALSE(diretorio.TemAdvertencias());
}

TEST_F(EntradasNotas, DiretorioDeTrabalhoInexistente) {
  ArquivoLimpo();
  const std::string caminho = entradas.Grava(diretorio.Arquivo("remessa.txt"), Bytes());
  const std::string inexistente = diretorio.Arquivo("nao-existe");
  EXPECT_EQ(validacao.Valida_Dados(caminho, numeroRemessa, inexistente), 9);
  EXPECT_FALSE(std::filesystem::exists(std::filesystem::u8path(inexistente)));
}

TEST_F(EntradasNotas, DiretorioDeTrabalhoQueEArquivo) {
  ArquivoLimpo();
  const std::string caminho = entradas.Grava(diretorio.Arquivo("remessa.txt"), Bytes());
  const std::string arquivoComum = entradas.Grava(diretorio.Arquivo("comum"), "conteúdo\r\n");
  EXPECT_EQ(validacao.Valida_Dados(caminho, numeroRemessa, arquivoComum), 9);
  EXPECT_FALSE(diretorio.TemAdvertencias());
}

TEST_F(EntradasNotas, DiretorioDeTrabalhoSemPermissaoDeEscrita) {
  arquivo.CabecalhoV1();
  const std::string caminho = entradas.Grava(diretorio.Arquivo("remessa.txt"), Bytes());
  DiretorioTemporario trabalho;
  std::filesystem::permissions(
      trabalho.Caminho(), std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
  if (!EscritaRecusada(trabalho.Caminho())) {
    GTEST_SKIP() << "este processo escreve mesmo sem permissão (superusuário)";
  }
  EXPECT_EQ(validacao.Valida_Dados(caminho, numeroRemessa, trabalho.Texto()), 9);
  EXPECT_FALSE(trabalho.TemAdvertencias());
}

TEST_F(EntradasNotas, AdvertenciasAntigasMaioresSaoSubstituidas) {
  GravaBytes(diretorio.Advertencias(), std::string(10000, 'x'));
  const Registro& cabecalho = arquivo.CabecalhoV1();
  EXPECT_EQ(ValidaBytes(Bytes()), 8);
  EXPECT_EQ(Gravadas(), Uma(88, cabecalho.Texto(), "00000001"));
}

TEST_F(EntradasNotas, AdvertenciasAntigasApagadasDepoisDeExecucaoLimpa) {
  GravaBytes(diretorio.Advertencias(), "88#0#0#antiga#00000001\r\n");
  ArquivoLimpo();
  EXPECT_EQ(ValidaBytes(Bytes()), 0);
  EXPECT_FALSE(diretorio.TemAdvertencias());
}

TEST_F(EntradasNotas, SeparadorDeVariosCaracteres) {
  // The separator is used as given, several characters, none, "#" itself or a character of the
  // code page; a "#" in the line is still replaced by a blank.
  const std::vector<std::pair<std::string, std::string>> separadores = {
      {"<=>", "<=>"}, {"", ""}, {"##", "##"}, {"§", "\xA7"}, {" ; ", " ; "}};
  arquivo.CabecalhoV1();
  Registro& abertura = arquivo.TR01();
  abertura.Campo(50, 1, "#");
  const std::string comBranco = Registro(abertura).Campo(50, 1, " ").Texto();
  const std::string caminho = entradas.Grava(diretorio.Arquivo("remessa.txt"), Bytes());
  for (const auto& [separador, gravado] : separadores) {
    EXPECT_EQ(
        validacao.Valida_Dados(caminho, numeroRemessa, diretorio.Texto(), 0, 0, "", "", separador),
        8);
    EXPECT_EQ(Gravadas(), Advertencias(gravado).Linha(201, comBranco, "00000002").Texto())
        << separador;
  }
}

TEST_F(EntradasNotas, ChavesComParteFracionaria) {
  struct Caso {
    double remessa;
    double processamento;
    const char* textoRemessa;
    const char* textoProcessamento;
  };
  const std::vector<Caso> casos = {{12.5, 0.25, "12,5", "0,25"},
                                   {-7.125, 1234567.5, "-7,125", "1234567,5"},
                                   {0.1, 3, "0,1", "3"}};
  const Registro& cabecalho = arquivo.CabecalhoV1();
  const std::string caminho = entradas.Grava(diretorio.Arquivo("remessa.txt"), Bytes());
  for (const Caso& caso : casos) {
    EXPECT_EQ(validacao.Valida_Dados(caminho, numeroRemessa, diretorio.Texto(), caso.remessa,
                                     caso.processamento),
              8);
    EXPECT_EQ(Gravadas(), Advertencias("#", caso.textoRemessa, caso.textoProcessamento)
                              .Linha(88, cabecalho.Texto(), "00000001")
                              .Texto());
  }
}

TEST_F(EntradasNotas, CaminhosComBrancosEAcentos) {
  const std::string trabalho = diretorio.Arquivo("trabalho com ação e pão");
  std::filesystem::create_directory(std::filesystem::u8path(trabalho));
  const Registro& cabecalho = arquivo.CabecalhoV1();
  const std::string caminho = entradas.Grava(diretorio.Arquivo("remessa de número ç.txt"), Bytes());
  EXPECT_EQ(validacao.Valida_Dados(caminho, numeroRemessa, trabalho), 8);
  EXPECT_EQ(LeBytes(trabalho + "/ADVERTENCIAS.TXT"), Uma(88, cabecalho.Texto(), "00000001"));
  EXPECT_EQ(numeroRemessa, "000001");
}

}  // namespace
}  // namespace quorv::teste
