// The registration-form warning catalogue.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "quorvvalida/cls_quorv_msg_fichas.hpp"

namespace quorv {
namespace {

std::string Texto(int16_t codigo) {
  return clsQuorvMsgFichas().MensagemAdvertenciaFichas(codigo);
}

TEST(CatalogoFichas, ForaDe1A129DaTextoVazio) {
  for (int16_t codigo : {0, 130, -1, 999, 32767, -32768})
    EXPECT_EQ(Texto(codigo), "") << codigo;
}

TEST(CatalogoFichas, TodoCodigoDe1A129TemTexto) {
  for (int16_t codigo = 1; codigo <= 129; ++codigo)
    EXPECT_NE(Texto(codigo), "") << codigo;
}

struct CasoTexto {
  int16_t codigo;
  std::string texto;
};

// Every text, byte for byte, as the treasury's systems show them: "TRAILLER", "páis",
// "Inclusao/Alteracao" and the blank that ends code 92 included.
TEST(CatalogoFichas, TextosComoOSistemaOsMostra) {
  const std::vector<CasoTexto> casos = {
      {1, "Linha com tamanho incorreto"},
      {2, "Arquivo com formato inválido"},
      {3, "Número da linha incorreta"},
      {4, "Arquivo sem HEADER"},
      {5, "TR inválido"},
      {6, "Arquivo com mais de um HEADER"},
      {7, "Arquivo sem TRAILLER"},
      {8, "Arquivo com mais de um TRAILLER"},
      {9, "Arquivos grudados"},
      {10, "Solicitação não iniciada"},
      {11, "Solicitação já encerrada"},
      {12, "Número da solicitação inválida"},
      {13, "Solicitação já iniciada"},
      {14, "Mais de um TR110 na solicitação"},
      {15, "Solicitação sem TR110"},
      {16, "TR115 sem TR110"},
      {17, "TR120 sem TR110"},
      {18, "Falta TR121 para TR120"},
      {19, "TR121 sem TR120"},
      {20, "Mais de um TR121 para TR120"},
      {21, "TR125 sem TR110"},
      {22, "Falta TR126 para TR125"},
      {23, "TR126 sem TR125"},
      {24, "Mais de um TR126 para TR125"},
      {25, "TR130 sem TR110"},
      {26, "Falta TR131 para TR130"},
      {27, "TR131 sem TR130"},
      {28, "Mais de um TR131 para TR130"},
      {29, "TR140 sem TR110"},
      {30, "Falta Proprietário vigente para TR140"},
      {31, "Quantidade de Proprietários vigente diferente do apresentado no TR140"},
      {32, "TR145 sem TR110"},
      {33, "TR145 sem TR140"},
      {34, "Falta TR146 para TR145"},
      {35, "TR146 sem TR145"},
      {36, "Mais de um TR146 para TR145"},
      {37, "TR197 sem TR110"},
      {38, "Falta TR199 - Solicitação em Aberto"},
      {39, "Solicitação sem estabelecimento"},
      {40, "Mais de um estabelecimento por solicitação"},
      {41, "Estabelecimento sem categoria vigente"},
      {42, "Estabelecimento com mais de uma categoria vigente"},
      {43, "Estabelecimento sem CNAE Fiscal vigente"},
      {44, "Quantidade de CNAE Fiscal vigente maior que 3"},
      {45, "Estabelecimento sem titular vigente"},
      {46, "Quantidade de titulares vigentes difere do informado no TR110"},
      {47, "Quantidade de participantes vigentes difere do informado no TR110"},
      {48, "Mais de 1 responsável legal vigente por estabelecimento"},
      {49, "Estabelecimento sem propriedade vigente"},
      {50, "Quantidade de propriedades vigentes difere do informado no TR110"},
      {51, "Somatório das áreas utilizadas difere da área do estabelecimento"},
      {52, "Falta responsável legal pelo estabelecimento"},
      {53, "Propriedade sem proprietários vigente"},
      {54, "Quantidade de proprietários vigentes difere do informado no TR140"},
      {55, "Campo deve ser igual a branco"},
      {56, "Código do município inválido"},
      {57, "Nome do município inválido"},
      {58, "Data da criação inválida"},
      {59, "Versão inválida"},
      {60, "Indicador de teste inválido"},
      {61, "Indicador de sincronismo inválido"},
      {62, "Indicador de adesão inválido"},
      {63, "Autenticação inválida"},
      {64, "Número da remessa inválida"},
      {65, "Tipo de solicitação inválido"},
      {66, "Indicador de alteração de estabelecimento/categoria inválido"},
      {67, "Indicador de alteração do CNAE Fiscal inválido"},
      {68, "Indicador de alteração de titular inválido"},
      {69, "Indicador de alteração de participante inválido"},
      {70, "Indicador de alteração de propriedade/proprietário inválido"},
      {71, "Indicador de alteração de responsável legal inválido"},
      {72, "Indicador de homologação inválido"},
      {73, "Inscrição Estadual do estabelecimento inválida"},
      {74, "Número da Prefeitura inválido"},
      {75, "Data de Início de atividade inválida"},
      {76, "Data de Fim de atividade inválida"},
      {77, "Nome do estabelecimento inválido"},
      {78, "Código do Logradouro inválido"},
      {79, "Código do distrito inválido"},
      {80, "Número inválido"},
      {81, "Complemento inválido"},
      {82, "Código do motivo de baixa inválido"},
      {83, "Área inválida"},
      {84, "Quantidade de propriedades inválida"},
      {85, "Quantidade de participantes inválida"},
      {86, "Quantidade de titulares inválida"},
      {87, "Inscrição Estadual do sucedido inválida"},
      {88, "Inscrição Estadual do sucessor inválida"},
      {89, "Código de categoria inválido"},
      {90, "Data de entrada inválida"},
      {91, "Data de saída inválida"},
      {92, "Código do CNAE Fiscal inválido "},
      {93, "Ordem de faturamento inválida"},
      {94, "Código de pessoa na prefeitura inválido"},
      {95, "Código de pessoa do IBM inválido"},
      {96, "Código do tipo de pessoa inválido"},
      {97, "CPF inválido"},
      {98, "CNPJ inválido"},
      {99, "Tipo do Logradouro inválido"},
      {100, "Nome do Logradouro inválido"},
      {101, "Nome do distrito inválido"},
      {102, "UF do Logradouro inválida"},
      {103, "Código do páis inválido"},
      {104, "DDD inválido"},
      {105, "Número do telefone inválido"},
      {106, "Precedência no talão inválida"},
      {107, "Unidade incompatível com o País"},
      {108, "Nome da pessoa inválida"},
      {109, "E-Mail inválido"},
      {110, "Zona inválida"},
      {111, "Matrícula inválida"},
      {112, "Área utilizada inválida"},
      {113, "Quantidade de proprietários inválida"},
      {114, "Sequência inválida"},
      {115, "Mensagem inválida"},
      {116, "Quantidade de TR110 inválida"},
      {117, "Quantidade de TR111 inválida"},
      {118, "Quantidade de TR115 inválida"},
      {119, "Quantidade de TR120 inválida"},
      {120, "Quantidade de TR125 inválida"},
      {121, "Quantidade de TR130 inválida"},
      {122, "Quantidade de TR140 inválida"},
      {123, "Quantidade de TR145 inválida"},
      {124, "Quantidade de TR197 inválida"},
      {125, "Solicitação Rejeitada"},
      {126, "Sincronismo com dados informados"},
      {127, "Inclusao/Alteracao com dados informados"},
      {128, "Quantidade de TR196 inválida"},
      {129, "Caracter inválido:#"},
  };
  ASSERT_EQ(casos.size(), 129u);
  for (const CasoTexto& caso : casos)
    EXPECT_EQ(Texto(caso.codigo), caso.texto) << caso.codigo;
}

}  // namespace
}  // namespace quorv
