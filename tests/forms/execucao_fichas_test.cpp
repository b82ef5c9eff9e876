// The form run: line frame, dispatch, status, progress and the public fields it fills.
#include <cmath>
#include <limits>
#include <ostream>
#include <stdexcept>
#include <vector>

#include "teste_fichas.hpp"

namespace quorv::teste {
namespace {

using ExecucaoFichas = TesteFichas;

TEST_F(ExecucaoFichas, ArquivoLimpoTerminaEm8NoTrailerSemAdvertencias) {
  arquivo.Cabecalho();
  arquivo.SolicitacaoCompleta("0000000001");
  arquivo.SolicitacaoCompleta("0000000002");
  arquivo.Trailer();
  EXPECT_EQ(Valida(), 8);
  EXPECT_FALSE(diretorio.TemAdvertencias());
  EXPECT_EQ(numeroRemessa, "000001");
  EXPECT_FALSE(validacao.bTem_Erro_Grave);
}

TEST_F(ExecucaoFichas, ArquivoLimpoApagaAdvertenciasDeOutraExecucao) {
  GravaBytes(diretorio.Advertencias(), "7#0#0#antiga#00000001\r\n");
  arquivo.Cabecalho();
  arquivo.SolicitacaoCompleta("0000000001");
  arquivo.Trailer();
  EXPECT_EQ(Valida(), 8);
  EXPECT_FALSE(diretorio.TemAdvertencias());
}

TEST_F(ExecucaoFichas, ArquivoVazioDeObjetoNovo) {
  const std::string caminho = diretorio.Arquivo("vazio.txt");
  GravaBytes(caminho, "");
  EXPECT_EQ(validacao.Valida_Fichas(caminho, numeroRemessa, diretorio.Texto()), 8);
  // A new object has read no line: the warning carries an empty line and an empty number.
  EXPECT_EQ(Gravadas(), "7#0#0##\r\n");
}

TEST_F(ExecucaoFichas, ArquivoVazioLevaALinhaDaExecucaoAnterior) {
  arquivo.Cabecalho();
  const Registro& ultima = arquivo.TR100();
  EXPECT_EQ(Valida(), 8);
  const std::string caminho = diretorio.Arquivo("vazio.txt");
  GravaBytes(caminho, "");
  EXPECT_EQ(validacao.Valida_Fichas(caminho, numeroRemessa, diretorio.Texto()), 8);
  EXPECT_EQ(Gravadas(), Advertencias().Linha(7, ultima.Texto(), "00000002").Texto());
}

TEST_F(ExecucaoFichas, SemTrailerNumeraPelaUltimaLinhaLida) {
  arquivo.Cabecalho();
  arquivo.TR100();
  // A line of a type that only passes the type test is still the last line read.
  const Registro& ultima = arquivo.Novo("010");
  EXPECT_EQ(Valida(), 8);
  EXPECT_EQ(Gravadas(), Advertencias().Linha(7, ultima.Texto(), "00000003").Texto());
}

class TamanhoDeLinha : public TesteFichas, public ::testing::WithParamInterface<std::size_t> {};

TEST_P(TamanhoDeLinha, ParaNaLinhaSemLerAsSeguintes) {
  const std::size_t largura = GetParam();
  arquivo.Cabecalho();
  arquivo.TR100();
  Registro linha(largura);
  linha.Numero(1, 8, 3).Campo(9, 3, "110");
  if (largura > kLarguraFichas) {
    linha.Campo(static_cast<int>(kLarguraFichas) + 1, static_cast<int>(largura - kLarguraFichas),
                std::string(largura - kLarguraFichas, 'x'));
  }
  arquivo.Bruta(linha.Texto());
  arquivo.Novo("999").Numero(1, 8, 9);
  EXPECT_EQ(Valida(), 8);
  EXPECT_EQ(Gravadas(),
            Advertencias().Linha(2, linha.ComLargura(kLarguraFichas), "00000003").Texto());
}

INSTANTIATE_TEST_SUITE_P(ExecucaoFichas, TamanhoDeLinha,
                         ::testing::Values(259u, 261u, 100000u, 1000000u));

TEST_F(ExecucaoFichas, PrimeiraLinhaDeTamanhoErrado) {
  Registro& cabecalho = arquivo.Cabecalho();
  const std::string curta = cabecalho.ComLargura(259);
  arquivo.Linha(0) = Registro(259);
  arquivo.Linha(0).Campo(1, 259, curta);
  EXPECT_EQ(Valida(), 8);
  EXPECT_EQ(Gravadas(), Advertencias().Linha(2, curta + " ", "00000001").Texto());
}

TEST_F(ExecucaoFichas, UltimaLinhaVaziaDepoisDoTrailerNaoELida) {
  arquivo.Cabecalho();
  arquivo.SolicitacaoCompleta("0000000001");
  arquivo.Trailer();
  arquivo.Bruta("");
  EXPECT_EQ(Valida(), 8);
  EXPECT_FALSE(diretorio.TemAdvertencias());
  EXPECT_FALSE(validacao.bTem_Erro_Grave);
}

TEST_F(ExecucaoFichas, UltimaLinhaVaziaSemTrailerFalhaA9) {
  arquivo.Cabecalho();
  arquivo.TR100();
  arquivo.TR110();
  arquivo.Bruta("");
  EXPECT_EQ(Valida(), 9);
  EXPECT_TRUE(validacao.bTem_Erro_Grave);
  EXPECT_FALSE(diretorio.TemAdvertencias());
  EXPECT_EQ(numeroRemessa, "000001");
}

TEST_F(ExecucaoFichas, FalhaGuardaAsAdvertenciasJaGravadas) {
  arquivo.Cabecalho();
  arquivo.TR100();
  arquivo.NomePessoa("121");
  arquivo.Novo(" A1");
  arquivo.Trailer();
  EXPECT_EQ(Valida(), 9);
  EXPECT_TRUE(validacao.bTem_Erro_Grave);
  EXPECT_EQ(Gravadas(), Esperado({{19, 3}}));
}

class TipoNaoNumerico : public TesteFichas, public ::testing::WithParamInterface<const char*> {};

TEST_P(TipoNaoNumerico, FalhaA9SemAdvertencia) {
  arquivo.Cabecalho();
  arquivo.Novo(GetParam());
  arquivo.Trailer();
  EXPECT_EQ(Valida(), 9);
  EXPECT_TRUE(validacao.bTem_Erro_Grave);
  EXPECT_FALSE(diretorio.TemAdvertencias());
}

INSTANTIATE_TEST_SUITE_P(ExecucaoFichas, TipoNaoNumerico,
                         ::testing::Values("   ", "A01", "1A ", "1 1", "--1", "#10"));

TEST_F(ExecucaoFichas, TipoNaoNumericoAntesDoTesteDeTamanho) {
  arquivo.Cabecalho();
  Registro curta(200);
  curta.Numero(1, 8, 2);
  arquivo.Bruta(curta.Texto());
  EXPECT_EQ(Valida(), 9);
  EXPECT_FALSE(diretorio.TemAdvertencias());
}

// The frame tests of a line run in a fixed order and the first that fails stops the run: the
// length, then the "#", then the line number, then the record type.
struct CasoQuadro {
  const char* nome;
  std::size_t largura;
  int sequencia;
  const char* tipo;
  bool cerquilha;
  int codigo;
};

// Failure messages name the case.
void PrintTo(const CasoQuadro& caso, std::ostream* saida) {
  *saida << caso.nome;
}

class OrdemDoQuadro : public TesteFichas, public ::testing::WithParamInterface<CasoQuadro> {};

TEST_P(OrdemDoQuadro, PrimeiroTesteQueFalhaPara) {
  const CasoQuadro& caso = GetParam();
  arquivo.Cabecalho();
  arquivo.TR100();
  Registro linha(caso.largura);
  linha.Numero(1, 8, caso.sequencia).Campo(9, 3, caso.tipo);
  if (caso.cerquilha) linha.Campo(100, 1, "#");
  arquivo.Bruta(linha.Texto());
  arquivo.Trailer();
  // The line as the warning copies it: cut or padded to 260 columns, its "#" made a blank.
  Registro copiada(linha);
  if (caso.cerquilha) copiada.Campo(100, 1, " ");
  EXPECT_EQ(Valida(), 8);
  EXPECT_EQ(
      Gravadas(),
      Advertencias().Linha(caso.codigo, copiada.ComLargura(kLarguraFichas), "00000003").Texto());
}

INSTANTIATE_TEST_SUITE_P(
    ExecucaoFichas, OrdemDoQuadro,
    ::testing::Values(CasoQuadro{"CurtaAntesDeTudo", 259, 9, "008", true, 2},
                      CasoQuadro{"LongaAntesDeTudo", 261, 9, "008", true, 2},
                      CasoQuadro{"CerquilhaAntesDaSequencia", 260, 9, "008", true, 129},
                      CasoQuadro{"SequenciaAntesDoTipo", 260, 9, "008", false, 3},
                      CasoQuadro{"TipoPorUltimo", 260, 3, "008", false, 5}),
    [](const ::testing::TestParamInfo<CasoQuadro>& info) { return info.param.nome; });

TEST_F(ExecucaoFichas, TipoNaoNumericoAntesDeTodoOQuadro) {
  arquivo.Cabecalho();
  arquivo.TR100();
  // Wrong length, a "#" and a wrong line number as well: the type is read first and fails.
  Registro linha(259);
  linha.Numero(1, 8, 9).Campo(9, 3, "A01").Campo(100, 1, "#");
  arquivo.Bruta(linha.Texto());
  arquivo.Trailer();
  EXPECT_EQ(Valida(), 9);
  EXPECT_TRUE(validacao.bTem_Erro_Grave);
  EXPECT_FALSE(diretorio.TemAdvertencias());
}

TEST_F(ExecucaoFichas, ParadaNoQuadroGuardaAsAdvertenciasAnteriores) {
  arquivo.Cabecalho();
  arquivo.TR100();
  arquivo.TR110();
  arquivo.NomePessoa("121");
  Registro curta(259);
  curta.Numero(1, 8, 5).Campo(9, 3, "199");
  arquivo.Bruta(curta.Texto());
  arquivo.Trailer();
  EXPECT_EQ(Valida(), 8);
  // The request is never closed: no rejection notice follows.
  EXPECT_EQ(Gravadas(),
            Esperado({{19, 4}}) +
                Advertencias().Linha(2, curta.ComLargura(kLarguraFichas), "00000005").Texto());
}

TEST_F(ExecucaoFichas, SequenciaPuladaPara) {
  arquivo.Cabecalho();
  arquivo.TR100();
  Registro& terceira = arquivo.TR110();
  terceira.Numero(1, 8, 4);
  arquivo.Trailer();
  EXPECT_EQ(Valida(), 8);
  EXPECT_EQ(Gravadas(), Advertencias().Linha(3, terceira.Texto(), "00000003").Texto());
}

TEST_F(ExecucaoFichas, SequenciaLidaPelosDigitosDoInicio) {
  arquivo.Cabecalho();
  // "0000002X" reads as 2, the line's number; "X0000003" reads as 0.
  arquivo.TR100().Campo(1, 8, "0000002X");
  Registro& terceira = arquivo.TR110();
  terceira.Campo(1, 8, "X0000003");
  EXPECT_EQ(Valida(), 8);
  EXPECT_EQ(Gravadas(), Advertencias().Linha(3, terceira.Texto(), "00000003").Texto());
}

class TipoQuePassaOTeste : public TesteFichas, public ::testing::WithParamInterface<const char*> {};

TEST_P(TipoQuePassaOTeste, LinhaIgnorada) {
  arquivo.Cabecalho();
  arquivo.Novo(GetParam());
  arquivo.SolicitacaoCompleta("0000000001");
  arquivo.Novo(GetParam());
  arquivo.Trailer();
  EXPECT_EQ(Valida(), 8);
  EXPECT_FALSE(diretorio.TemAdvertencias());
}

// Types whose decimal text is part of a listed type.
INSTANTIATE_TEST_SUITE_P(ExecucaoFichas, TipoQuePassaOTeste,
                         ::testing::Values("010", "000", "002", "011", "012", "013", "014", "019",
                                           "020", "021", "025", "026", "030", "031", "040", "045",
                                           "046", "096", "097", "099", " 10", "10 ", "+10"));

class TipoInvalido : public TesteFichas, public ::testing::WithParamInterface<const char*> {};

TEST_P(TipoInvalido, ParaComAdvertencia5) {
  arquivo.Cabecalho();
  arquivo.TR100();
  const Registro& registro = arquivo.Novo(GetParam());
  arquivo.Trailer();
  EXPECT_EQ(Valida(), 8);
  EXPECT_EQ(Gravadas(), Advertencias().Linha(5, registro.Texto(), "00000003").Texto());
}

INSTANTIATE_TEST_SUITE_P(ExecucaoFichas, TipoInvalido,
                         ::testing::Values("008", "022", "050", "101", "200", "998", "-01", "-1 "));

TEST_F(ExecucaoFichas, CerquilhaNaLinhaPara) {
  arquivo.Cabecalho();
  Registro& abertura = arquivo.TR100();
  abertura.Campo(30, 3, "A#B");
  const std::string comBranco = Registro(abertura).Campo(30, 3, "A B").Texto();
  arquivo.Trailer();
  EXPECT_EQ(Valida(), 8);
  EXPECT_EQ(Gravadas(), Advertencias().Linha(129, comBranco, "00000002").Texto());
}

TEST_F(ExecucaoFichas, CabecalhoNaSegundaLinhaPara) {
  arquivo.Novo("010");
  const Registro& cabecalho = arquivo.Cabecalho();
  arquivo.Trailer();
  EXPECT_EQ(Valida(), 8);
  EXPECT_EQ(Gravadas(), Advertencias().Linha(3, cabecalho.Texto(), "00000002").Texto());
  EXPECT_EQ(numeroRemessa, "");
}

TEST_F(ExecucaoFichas, SegundoCabecalhoParaPeloNumeroDaLinha) {
  arquivo.Cabecalho();
  arquivo.TR100();
  const Registro& segundo = arquivo.Cabecalho();
  EXPECT_EQ(Valida(), 8);
  EXPECT_EQ(Gravadas(), Advertencias().Linha(3, segundo.Texto(), "00000003").Texto());
}

TEST_F(ExecucaoFichas, SolicitacaoComRegistroRecusadoERejeitada) {
  arquivo.Cabecalho();
  arquivo.TR100();
  arquivo.TR110();
  arquivo.NomePessoa("121");
  arquivo.DaSolicitacao("199");
  arquivo.Trailer();
  EXPECT_EQ(Valida(), 8);
  EXPECT_EQ(Gravadas(), Esperado({{19, 4}, {125, 3}}));
}

TEST_F(ExecucaoFichas, SoASolicitacaoComRecusaERejeitada) {
  arquivo.Cabecalho();
  arquivo.SolicitacaoCompleta("0000000001");
  arquivo.TR100("0000000002");
  arquivo.TR110();
  arquivo.NomePessoa("121");
  arquivo.DaSolicitacao("199");
  arquivo.SolicitacaoCompleta("0000000003");
  arquivo.Trailer();
  EXPECT_EQ(Valida(), 8);
  EXPECT_EQ(Gravadas(), Esperado({{19, 12}, {125, 11}}));
}

TEST_F(ExecucaoFichas, CabecalhoRecusadoParaEDevolveONumeroDaRemessa) {
  arquivo.Cabecalho().Campo(36, 25, "");
  arquivo.TR100();
  arquivo.Novo("998");
  numeroRemessa = "antes";
  EXPECT_EQ(Valida(), 8);
  EXPECT_EQ(Gravadas(), Esperado({{57, 1}}));
  // The remittance number is taken before the header's checks.
  EXPECT_EQ(numeroRemessa, "000001");
  EXPECT_EQ(validacao.sNumeroRemessaRef, "000001");
}

TEST_F(ExecucaoFichas, NumeroDaRemessaDeExecucaoAnteriorQuandoNaoHaCabecalho) {
  arquivo.Cabecalho().Campo(61, 6, "000042");
  EXPECT_EQ(Valida(), 8);
  const std::string caminho = diretorio.Arquivo("vazio.txt");
  GravaBytes(caminho, "");
  std::string outro = "antes";
  EXPECT_EQ(validacao.Valida_Fichas(caminho, outro, diretorio.Texto()), 8);
  EXPECT_EQ(outro, "000042");
}

TEST_F(ExecucaoFichas, DiretorioDeTrabalhoInexistenteOuVazio) {
  arquivo.Cabecalho();
  const std::string caminho = arquivo.Grava(diretorio);
  GravaBytes(diretorio.Advertencias(), "antiga\r\n");
  numeroRemessa = "antes";
  for (const std::string& dir : {diretorio.Arquivo("nao-existe"), std::string(), caminho}) {
    validacao.bTem_Erro_Grave = true;
    EXPECT_EQ(validacao.Valida_Fichas(caminho, numeroRemessa, dir), 9) << dir;
    EXPECT_FALSE(validacao.bTem_Erro_Grave) << dir;
  }
  EXPECT_EQ(numeroRemessa, "antes");
  EXPECT_EQ(LeBytes(diretorio.Advertencias()), "antiga\r\n");
}

TEST_F(ExecucaoFichas, ArquivoInexistenteApagaAdvertenciasAntigas) {
  GravaBytes(diretorio.Advertencias(), "antiga\r\n");
  EXPECT_EQ(validacao.Valida_Fichas(diretorio.Arquivo("nao-existe.txt"), numeroRemessa,
                                    diretorio.Texto()),
            9);
  EXPECT_FALSE(diretorio.TemAdvertencias());
}

TEST_F(ExecucaoFichas, ArquivoDeAdvertenciasNaoSobrescreveAEntrada) {
  arquivo.Cabecalho();
  const std::string conteudo = JuntaLinhas(arquivo.Linhas());
  GravaBytes(diretorio.Advertencias(), conteudo);
  EXPECT_EQ(validacao.Valida_Fichas(diretorio.Advertencias(), numeroRemessa, diretorio.Texto()), 9);
  EXPECT_EQ(LeBytes(diretorio.Advertencias()), conteudo);
}

TEST_F(ExecucaoFichas, CamposPublicosDaSolicitacao) {
  arquivo.Cabecalho().Campo(61, 6, "000314");
  arquivo.SolicitacaoCompleta("0000000001");
  arquivo.TR100("0000000777").Campo(22, 1, "3");
  arquivo.TR110().Campo(42, 8, "20210305").Campo(50, 8, "20231231");
  arquivo.DaSolicitacao("199");
  arquivo.Trailer();
  EXPECT_EQ(Valida(), 8);
  EXPECT_FALSE(diretorio.TemAdvertencias());
  EXPECT_EQ(validacao.sNumeroRemessaRef, "000314");
  EXPECT_EQ(numeroRemessa, "000314");
  EXPECT_EQ(validacao.sTipo_Solicitacao, "3");
  EXPECT_EQ(validacao.sNro_Solicitacao, "0000000777");
  EXPECT_EQ(validacao.iOrdem_Faturamento, 1);
  EXPECT_EQ(validacao.Dt_Inicio_Atividade, "20210305");
  EXPECT_EQ(validacao.Dt_Fim_Atividade, "20231231");
  EXPECT_EQ(validacao.contSolicitacao, 0);
  EXPECT_EQ(validacao.contInscricao, 0);
}

TEST_F(ExecucaoFichas, CamposEscritosAntesDaExecucaoNaoMudamOResultado) {
  arquivo.Cabecalho();
  arquivo.SolicitacaoCompleta("0000000001");
  arquivo.TR100("0000000002");
  arquivo.TR110();
  arquivo.NomePessoa("121");
  arquivo.DaSolicitacao("199");
  arquivo.Trailer();
  validacao.sNumeroRemessaRef = "999999";
  validacao.sTipo_Solicitacao = "X";
  validacao.sNro_Solicitacao = "XXXXXXXXXX";
  validacao.iOrdem_Faturamento = 7;
  validacao.Dt_Inicio_Atividade = "29991231";
  validacao.Dt_Fim_Atividade = "19000101";
  validacao.contSolicitacao = 5;
  validacao.contInscricao = 6;
  validacao.bTem_Erro_Grave = true;
  EXPECT_EQ(Valida(), 8);
  EXPECT_EQ(Gravadas(), Esperado({{19, 12}, {125, 11}}));
  EXPECT_EQ(validacao.sNumeroRemessaRef, "000001");
  EXPECT_EQ(validacao.sTipo_Solicitacao, "1");
  EXPECT_EQ(validacao.sNro_Solicitacao, "0000000002");
  EXPECT_EQ(validacao.iOrdem_Faturamento, 1);
  EXPECT_EQ(validacao.Dt_Inicio_Atividade, "20200101");
  EXPECT_EQ(validacao.Dt_Fim_Atividade, "00000000");
  EXPECT_EQ(validacao.contSolicitacao, 0);
  EXPECT_EQ(validacao.contInscricao, 0);
  EXPECT_FALSE(validacao.bTem_Erro_Grave);
}

TEST_F(ExecucaoFichas, ObjetoServeParaVariasExecucoes) {
  arquivo.Cabecalho();
  arquivo.TR100();
  const std::string comErro = arquivo.Grava(diretorio, "com-erro.txt");
  ArquivoFichas limpo;
  limpo.Cabecalho();
  limpo.SolicitacaoCompleta("0000000001");
  limpo.Trailer();
  const std::string semErro = limpo.Grava(diretorio, "limpo.txt");
  EXPECT_EQ(validacao.Valida_Fichas(comErro, numeroRemessa, diretorio.Texto()), 8);
  EXPECT_TRUE(diretorio.TemAdvertencias());
  EXPECT_EQ(validacao.Valida_Fichas(semErro, numeroRemessa, diretorio.Texto()), 8);
  EXPECT_FALSE(diretorio.TemAdvertencias());
}

// Progress.

// A request of `linhas` lines in all with the header and the trailer.
void ArquivoDeLinhas(ArquivoFichas& arquivo, int linhas) {
  arquivo.Cabecalho();
  arquivo.TR100();
  arquivo.TR110();
  for (int i = 0; i < linhas - 5; ++i)
    arquivo.DaSolicitacao("196");
  arquivo.DaSolicitacao("199");
  arquivo.Trailer();
}

// The events of a new object over a file of `linhas` lines of `bytes` bytes each.
std::vector<double> ProgressoEsperado(int linhas, double bytes) {
  std::vector<double> esperado;
  double porcentagem = 0;
  for (int linha = 1; linha <= linhas; ++linha) {
    if (porcentagem >= 0 && porcentagem <= 100) {
      porcentagem = linha / (linhas * bytes / 262) * 100;
    } else {
      porcentagem = 100;
    }
    esperado.push_back(porcentagem);
  }
  return esperado;
}

TEST_F(ExecucaoFichas, ProgressoAntesDeCadaLinha) {
  ArquivoDeLinhas(arquivo, 40);
  std::vector<double> recebido;
  validacao.FichaProgress = [&](double& porcentagem) { recebido.push_back(porcentagem); };
  EXPECT_EQ(Valida(), 8);
  const std::vector<double> esperado = ProgressoEsperado(40, 262);
  ASSERT_EQ(recebido.size(), 40u);
  for (std::size_t i = 0; i < esperado.size(); ++i)
    EXPECT_DOUBLE_EQ(recebido[i], esperado[i]) << i;
  EXPECT_DOUBLE_EQ(recebido.front(), 2.5);
  EXPECT_DOUBLE_EQ(recebido.back(), 100);
}

TEST_F(ExecucaoFichas, ProgressoComFimDeLinhaSoLFAlternaCom100) {
  ArquivoDeLinhas(arquivo, 600);
  const std::string caminho = arquivo.Grava(diretorio, "lf.txt", "\n");
  std::vector<double> recebido;
  validacao.FichaProgress = [&](double& porcentagem) { recebido.push_back(porcentagem); };
  EXPECT_EQ(validacao.Valida_Fichas(caminho, numeroRemessa, diretorio.Texto()), 8);
  EXPECT_FALSE(diretorio.TemAdvertencias());
  const std::vector<double> esperado = ProgressoEsperado(600, 261);
  ASSERT_EQ(recebido.size(), 600u);
  for (std::size_t i = 0; i < esperado.size(); ++i)
    EXPECT_DOUBLE_EQ(recebido[i], esperado[i]) << i;
  // Past 100 the events alternate: a fresh estimate above 100, then exactly 100, and again.
  int alternancias = 0;
  for (std::size_t i = 2; i < recebido.size(); ++i) {
    if (recebido[i - 2] > 100 && recebido[i - 1] == 100 && recebido[i] > 100) ++alternancias;
  }
  EXPECT_GE(alternancias, 1);
}

TEST_F(ExecucaoFichas, AnfitriaoMudaAPorcentagem) {
  ArquivoDeLinhas(arquivo, 10);
  std::vector<double> recebido;
  validacao.FichaProgress = [&](double& porcentagem) {
    recebido.push_back(porcentagem);
    if (recebido.size() == 1) porcentagem = 150;
    if (recebido.size() == 4) porcentagem = -1;
  };
  EXPECT_EQ(Valida(), 8);
  // Above 100 the next event is 100; below 0 the events stop.
  ASSERT_EQ(recebido.size(), 4u);
  EXPECT_DOUBLE_EQ(recebido[0], 10);
  EXPECT_EQ(recebido[1], 100);
  EXPECT_DOUBLE_EQ(recebido[2], 30);
  EXPECT_DOUBLE_EQ(recebido[3], 40);
}

TEST_F(ExecucaoFichas, PorcentagemNaoNumericaParaOsEventos) {
  ArquivoDeLinhas(arquivo, 10);
  int eventos = 0;
  validacao.FichaProgress = [&](double& porcentagem) {
    ++eventos;
    porcentagem = std::numeric_limits<double>::quiet_NaN();
  };
  EXPECT_EQ(Valida(), 8);
  EXPECT_EQ(eventos, 1);
}

TEST_F(ExecucaoFichas, PorcentagemPassaDeUmaExecucaoAOutra) {
  ArquivoDeLinhas(arquivo, 10);
  std::vector<double> recebido;
  validacao.FichaProgress = [&](double& porcentagem) {
    recebido.push_back(porcentagem);
    if (recebido.size() == 10) porcentagem = 250;
  };
  EXPECT_EQ(Valida(), 8);
  recebido.clear();
  EXPECT_EQ(Valida(), 8);
  // The second run starts from the 250 the first one ended with.
  ASSERT_EQ(recebido.size(), 10u);
  EXPECT_EQ(recebido[0], 100);
  EXPECT_DOUBLE_EQ(recebido[1], 20);

  validacao.FichaProgress = [&](double& porcentagem) {
    recebido.push_back(porcentagem);
    porcentagem = -5;
  };
  recebido.clear();
  EXPECT_EQ(Valida(), 8);
  EXPECT_EQ(recebido.size(), 1u);
  recebido.clear();
  EXPECT_EQ(Valida(), 8);
  EXPECT_TRUE(recebido.empty());
}

TEST_F(ExecucaoFichas, SemEventoAExecucaoSegueIgual) {
  ArquivoDeLinhas(arquivo, 10);
  EXPECT_EQ(Valida(), 8);
  EXPECT_FALSE(diretorio.TemAdvertencias());
}

TEST_F(ExecucaoFichas, EventoQueFalhaTerminaEm9) {
  arquivo.Cabecalho();
  arquivo.TR100();
  arquivo.NomePessoa("121");
  arquivo.Trailer();
  int eventos = 0;
  validacao.FichaProgress = [&](double&) {
    if (++eventos == 4) throw std::runtime_error("anfitrião");
  };
  EXPECT_EQ(Valida(), 9);
  EXPECT_TRUE(validacao.bTem_Erro_Grave);
  EXPECT_EQ(Gravadas(), Esperado({{19, 3}}));
}

}  // namespace
}  // namespace quorv::teste
