// The invoice warning catalogue.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "quorvvalida/cls_quorv_msg.hpp"

namespace quorv {
namespace {

std::string Texto(int16_t codigo) {
  return clsQuorvMsg().MensagemAdvertencia(codigo);
}

TEST(CatalogoNotas, CodigoSemTextoDizErroNaoCadastrado) {
  for (int16_t codigo : {0, 204, -1, 96, 97, 98, 99, 100, 180, 181, 182, 192, 199, 32767}) {
    EXPECT_EQ(Texto(codigo), "Erro não cadastrado") << codigo;
  }
}

TEST(CatalogoNotas, TodoCodigoDe1A203TemTextoSalvoOsDezSemUso) {
  int comTexto = 0;
  for (int16_t codigo = 1; codigo <= 203; ++codigo) {
    if (Texto(codigo) != "Erro não cadastrado") ++comTexto;
  }
  EXPECT_EQ(comTexto, 193);
}

TEST(CatalogoNotas, SeisTextosServemADuasPartes) {
  const std::vector<std::pair<int16_t, int16_t>> pares = {{20, 53}, {21, 54}, {22, 55},
                                                          {23, 56}, {46, 59}, {47, 60}};
  for (const auto& [primeiro, segundo] : pares) {
    EXPECT_EQ(Texto(primeiro), Texto(segundo)) << primeiro << " e " << segundo;
  }
  EXPECT_EQ(Texto(53), "Dígito verificador do CNPJ/CPF do Destinatário inválido");
}

struct CasoTexto {
  int16_t codigo;
  std::string texto;
};

// Every text byte for byte, as the treasury's systems show it: double blanks ("Arquivo com:  Mais
// de um Header", "Dois TR´s  20 seguidos"), the acute accent of "TR´s", the blanks inside the
// parentheses and the spellings as they are ("Trailler", "Destinátario", "substituida").
TEST(CatalogoNotas, CadaCodigoComOSeuTexto) {
  const std::vector<CasoTexto> casos = {
      {1, "Série tem que ser numérica"},
      {2, "Série tem que ser maior que zero"},
      {3, "Informe Número da Nota Fiscal"},
      {4, "Número da Nota Fiscal tem que ser numérico"},
      {5, "Número da Nota Fiscal tem que ser maior que zero"},
      {6, "CFOP tem que ser numérico"},
      {7, "CFOP tem que ser maior que zero"},
      {8, "CFOP inexistente"},
      {9, "Informe a Data de Emissão da Nota Fiscal"},
      {10, "Data de Emissão inválida"},
      {11, "Data de Emissão muito antiga"},
      {12, "Data de Emissão maior que a do Movimento"},
      {13, "Informe CNPJ/CPF do Emitente"},
      {14, "Dígito verificador do CNPJ/CPF do Emitente inválido"},
      {15, "Informe a UF do Emitente"},
      {16, "UF do Emitente inválida"},
      {17, "Informe Inscrição Estadual do Emitente"},
      {18, "Dígito verificador da Inscrição Estadual do Emitente inválido"},
      {19, "Dígito verificador da Inscrição Estadual ST do Emitente inválido"},
      {20, "Dígito verificador do CNPJ/CPF do Destinatário inválido"},
      {21, "UF do Destinatário inválida"},
      {22, "Dígito verificador da Inscrição Estadual do Destinatário inválido"},
      {23, "Informe pelo menos CNPJ/CPF ou Inscrição Estadual do Destinatário"},
      {24, "Base de Cálculo do ICMS deve ser numérica"},
      {25, "Base de Cálculo do ICMS deve ser maior que Valor ICMS"},
      {26, "Valor ICMS deve ser numérico"},
      {27, "Valor ICMS deve ser menor ou igual a Base de Cálculo do ICMS"},
      {28, "Base de Cálculo do ICMS ST deve ser numérica"},
      {29, "Base de Cálculo do ICMS ST deve ser maior que Valor ICMS ST"},
      {30, "Valor ICMS ST deve ser numérico"},
      {31, "Valor ICMS ST deve ser menor ou igual a Base de Cálculo do ICMS ST"},
      {32, "Informe Valor Total da Nota"},
      {33, "Valor Total da Nota deve ser numérico"},
      {34, "Valor Total da Nota deve ser maior que zero"},
      {35, "Valor Total da Nota deve ser maior que Base de Cálculo do ICMS"},
      {36, "Informe Tipo de Nota de Produtor"},
      {37, "Tipo de Nota de Produtor inválido"},
      {38, "Informe Série da Nota Fiscal"},
      {39, "Informe Natureza da Operação"},
      {40, "Natureza da Operação tem que ser numérica"},
      {41, "Natureza da operação tem que ser maior que zero"},
      {42, "Natureza da Operação inexistente"},
      {43, "Informe Número do Conhecimento de Transporte"},
      {44, "Número do Conhecimento de Transporte deve ser numérico"},
      {45, "Número do Conhecimento de Transporte deve ser maior que zero"},
      {46, "Valor Total da Prestação deve ser numérico"},
      {47, "Valor Total da Prestação deve ser maior que zero"},
      {48, "Informe Data de Emissão do Conhecimento de Transporte"},
      {49, "Dígito verificador do CNPJ/CPF do Remetente inválido"},
      {50, "UF do Remetente inválida"},
      {51, "Dígito verificador da Inscrição Estadual do Remetente inválido"},
      {52, "Informe pelo menos CNPJ/CPF ou Inscrição Estadual do Remetente"},
      {53, "Dígito verificador do CNPJ/CPF do Destinatário inválido"},
      {54, "UF do Destinatário inválida"},
      {55, "Dígito verificador da Inscrição Estadual do Destinatário inválido"},
      {56, "Informe pelo menos CNPJ/CPF ou Inscrição Estadual do Destinatário"},
      {57, "Informe Tipo do Despacho"},
      {58, "Tipo do Despacho inválido"},
      {59, "Valor Total da Prestação deve ser numérico"},
      {60, "Valor Total da Prestação deve ser maior que zero"},
      {61, "Tipo Fonte Inválida"},
      {62, "Fonte Inválida"},
      {63, "CNPJ/CPF do Emitente deve ser numérico"},
      {64, "CNPJ/CPF do Remetente deve ser numérico"},
      {65, "CNPJ/CPF do Destinátario deve ser numérico"},
      {66, "Campo Numérico Esperado"},
      {67, "Campo Obrigatório não Informado"},
      {68, "Data Inválida"},
      {69, "Hora Inválida"},
      {70, "Campo deve ser ' ' ou 'T'"},
      {71, "Versão Incorreta"},
      {72, "Código da Central Inválida"},
      {73, "Nome da Central Inválida"},
      {74, "Autenticação Incorreta"},
      {75, "Tipo Operação Inválida"},
      {76, "Arquivo em formato Inválido"},
      {77, "Linha com tamanho Incorreto"},
      {78, "TR Inválido"},
      {79, "Não pode ler unidade informada"},
      {80, "Arquivo Não Encontrado"},
      {81, "Brancos Esperados"},
      {82, "Número Nota ou Valor Nota deve ser Informado"},
      {83, "Registro Vinculado sem Documento Correspondente"},
      {84, "Código de Erro Inválido"},
      {85, "Quantidade de Registros Incorreta"},
      {86, "Arquivo sem Header"},
      {87, "Arquivo com:  Mais de um Header"},
      {88, "Arquivo sem Trailler"},
      {89, "Arquivo com mais de um Trailler"},
      {90, "Não foi possível criar arquivos auxiliares"},
      {91, "Emitente inoperante na data"},
      {92, "Destinatário inoperante na data"},
      {93, "Número de Remessa Inválido"},
      {94, "Data de Digitação do Documento está fora do período de competência do Movimento"},
      {95, "Erro na abertura do arquivo"},
      {101, "ERRO NA EXECUÇÃO"},
      {102, "Código de Município inexistente"},
      {103, "Nome do Município inválido"},
      {104, "Código de Município inválido"},
      {105, "Número da Remessa não está na sequência"},
      {106, "Inscrição Estadual do Emitente inválida"},
      {107, "Tipo de Nota de Produtor inválida"},
      {108, "Série da nota fiscal inválida"},
      {109, "Número da nota fiscal inválida"},
      {110, "Tipo de movimento da nota fiscal inválido"},
      {111, "Data de emissão da nota fiscal inválida"},
      {112, "Inscrição Estadual do Destinatário ou Remetente inválida"},
      {113, "CNPJ ou CPF do Destinatário ou Remetente inválida"},
      {114, "País do Destinatário ou Remetente inválido"},
      {115, "Unidade da Federação do Destinatário ou Remetente inválida"},
      {116, "Situação da nota fiscal inválida"},
      {117, "Número de AIDF inválido"},
      {118, "Código de operação de produtor inválido"},
      {119, "Base de cálculo do ICMS inválida"},
      {120, "Valor do ICMS inválido"},
      {121, "Valor total das mercadorias inválido"},
      {122, "Valor total da nota fiscal inválido"},
      {123, "Série inválida em relação ao Tipo de Nota de Produtor"},
      {124, "Base de Cálculo do ICMS sem imposto de ICMS ou vice-versa"},
      {125, "TR 81 subsequente sem TR 80 ou TR 81 subsequente não coincide com TR 80"},
      {126, "Número de item inválido"},
      {127, "Código de produto inválido"},
      {128, "Quantidade de produto inválida"},
      {129, "Sigla de unidade de produto inválida"},
      {130, "Valor unitário do produto inválido"},
      {131, "Valor total do produto inválido"},
      {132, "Tipo de documento de liquidação inválido"},
      {133, "Número da Guia de Arrecadação inválido"},
      {134, "Referência da Guia de Arrecadação inválida"},
      {135, "Valor da Guia de Arrecadação é inválido"},
      {136, "Número do item da parcela da Guia de Arrecadação inválido"},
      {137, "Código da parcela da Guia de Arrecadação inválido"},
      {138, "Valor do item da parcela da Guia de Arrecadação inválido"},
      {139, "Funrural inválido"},
      {140, "Rendimento inválido"},
      {141, "Grupo de remessa sem TR 10"},
      {142, "Grupo de remessa com TR 10 e sem TR 15"},
      {143, "Somatório do valor total dos TR 15 não é igual ao total dos produtos do TR 10"},
      {144, "Dois TR´s  20 seguidos"},
      {145, "Registro não pertence ao grupo"},
      {146, "Inscrição Estadual do Documento de Liquidação inválida"},
      {147, "Existência de dois ou mais arquivos juntos no mesmo arquivo"},
      {148, "Bloco de registros não foi fechado corretamente ( falta TR98 ou TR01 )"},
      {149, "Grupo de remessa com TR 20 e sem TR 25"},
      {150, "Somatório do valor total dos TR 25 não é igual ao total dos produtos do TR 20"},
      {151, "Grupo de remessa com TR 30 e sem TR 35"},
      {152, "Somatório do valor total dos TR 35 não é igual ao total dos produtos do TR 30"},
      {153, "Grupo de remessa com TR 15 e sem TR 10"},
      {154, "Grupo de remessa com TR 20 e sem TR 10"},
      {155, "Grupo de remessa com TR 25 e sem TR 20"},
      {156, "Grupo de remessa com TR 30 e sem TR 10"},
      {157, "Grupo de remessa com TR 35 e sem TR 30"},
      {158, "CFOP deve estar entre 100 e 799"},
      {159,
       "Data de emissão da Guia de Arrecadação está menor que a data de emissão da Nota de "
       "Produtor"},
      {160, "Quantidade de TR´s 10 informado no TR 98 é inválida"},
      {161, "Quantidade de TR´s 15 informado no TR 98 é inválida"},
      {162, "Quantidade de TR´s 20 informado no TR 98 é inválida"},
      {163, "Quantidade de TR´s 25 informado no TR 98 é inválida"},
      {164, "Quantidade de TR´s 30 informado no TR 98 é inválida"},
      {165, "Quantidade de TR´s 35 informado no TR 98 é inválida"},
      {166, "Sequência do registro ( número da linha ) está incorreta"},
      {167, "Nota Fiscal de Produtor rejeitada."},
      {168, "Quantidade de TR´s 10 informado no TR 99 é inválida"},
      {169, "Quantidade de TR´s 15 informado no TR 99 é inválida"},
      {170, "Quantidade de TR´s 20 informado no TR 99 é inválida"},
      {171, "Quantidade de TR´s 25 informado no TR 99 é inválida"},
      {172, "Quantidade de TR´s 30 informado no TR 99 é inválida"},
      {173, "Quantidade de TR´s 35 informado no TR 99 é inválida"},
      {174, "Erro inesperado de aplicativo"},
      {175, "Sequência do TR 15 ( número do item ) é inválida"},
      {176, "Sequência do TR 25 ( número do item ) é inválida"},
      {177, "Sequência do TR 35 ( número do item ) é inválida"},
      {178,
       "Notas do mesmo grupo com emitente ou destinatário ou país ou UF's ou operação diferentes "
       "entre si"},
      {179, "Tipo de documento de liquidação incompatível com a operação de produtor"},
      {183, "Número de Auto de Lançamento inválido"},
      {184, "Data de Lavratura inválida"},
      {185, "Data do Ciente inválida"},
      {186, "Inscrição Estadual do Sujeito Passivo inválida"},
      {187, "CPF do Sujeito Passivo inválido"},
      {188, "CNPJ do Sujeito Passivo inválido"},
      {189, "Nome do Sujeito Passivo inválido"},
      {190, "Valor Total Auto de Lançamento inválido"},
      {191, "Informações de Identificação do Sujeito Passivo inexistentes"},
      {193, "Código da Fonte inválida"},
      {194, "Tipo de Fonte inválida"},
      {195, "Código de Finalidade do arquivo magnético inválido"},
      {196, "Nome de Informante inválido"},
      {197, "Tipo de Remetente não autorizado ao Tipo de Fonte"},
      {198, "Tipo de Remessa inválido"},
      {200, "Solicitação substituida deve ser numérico"},
      {201, "Caractere inválido:#"},
      {202, "Nota Fiscal de Produtor dupla"},
      {203, "Informante não autorizado ao Estabelecimento"},
  };
  ASSERT_EQ(casos.size(), 193u);
  for (const CasoTexto& caso : casos)
    EXPECT_EQ(Texto(caso.codigo), caso.texto) << caso.codigo;
}

}  // namespace
}  // namespace quorv
