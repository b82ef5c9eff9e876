// quorvvalida: validates producer-invoice and registration-form files from the command line.
#include <cstdio>
#include <map>
#include <regex>
#include <string>
#include <vector>

#include <fmt/core.h>
#include <CLI/CLI.hpp>

#include "comandos.hpp"
#include "quorvvalida/quorvvalida.hpp"
#ifdef QUORVVALIDA_SERVICO
#include "servir/servir.hpp"
#endif

namespace {

using quorv::ferramenta::Tipo;

constexpr const char* kUso =
    "Uso: quorvvalida [opções] ARQUIVO\n"
    "     quorvvalida notas|fichas ARQUIVO [-d DIR] [opções]\n"
    "     quorvvalida web ARQUIVO -r RETORNO [-d DIR] [--tipo P|F]\n"
    "     quorvvalida mensagem notas|fichas CODIGO\n"
    "     quorvvalida advertencias notas|fichas ARQUIVO\n"
    "     quorvvalida servir [--endereco E] [--porta P] [opções]\n";

constexpr const char* kOpcoesValidacao =
    "  -d, --diretorio DIR          diretório de trabalho, onde fica ADVERTENCIAS.TXT\n"
    "                               (padrão: o diretório atual)\n"
    "  --chave-remessa N            chave da remessa gravada em cada advertência (padrão 0)\n"
    "  --chave-processamento N      chave do processamento (padrão 0)\n"
    "  --origem TEXTO               origem da chamada; \"A0\" só conta os registros dos grupos\n"
    "  --servidor TEXTO             nome do servidor; \"TARNWEB\" dispensa as verificações de\n"
    "                               campos das fichas\n"
    "  --separador TEXTO            separador dos campos de ADVERTENCIAS.TXT (padrão #)\n";

constexpr const char* kOpcoesGerais =
    "  --json                       um documento JSON na saída em vez do resumo\n"
    "  -q, --quieto                 não imprime nada além de erros\n"
    "  --limite N                   no máximo N advertências na tabela (padrão: todas)\n"
    "  --hoje AAAAMMDD              a data que vale como hoje nas verificações de datas\n"
    "  --inscricao-lib CAMINHO      carrega a biblioteca de inscrição estadual deste arquivo\n"
    "  --sem-verificar-inscricao    aceita toda inscrição estadual sem consultar a biblioteca\n"
    "  -h, --help                   mostra esta ajuda\n"
    "  --version                    mostra a versão\n";

void AjudaGeral() {
  fmt::print(
      "quorvvalida {}: valida arquivos de notas fiscais de produtor (linhas de 160 caracteres)\n"
      "e de ficha cadastral (linhas de 260 caracteres). Cada problema vira uma linha de\n"
      "ADVERTENCIAS.TXT no diretório de trabalho.\n\n{}\n"
      "Comandos:\n"
      "  ARQUIVO                      identifica o tipo pela primeira linha e valida\n"
      "  notas ARQUIVO                valida um arquivo de notas fiscais de produtor\n"
      "  fichas ARQUIVO               valida um arquivo de ficha cadastral\n"
      "  web ARQUIVO -r RETORNO       valida como o sistema web e escreve o arquivo de retorno\n"
      "  mensagem notas|fichas COD    mostra o texto de um código de advertência\n"
      "  advertencias notas|fichas A  lista um arquivo de advertências\n"
      "  servir                       serviço HTTP de validação (quorvvalida servir --help)\n\n"
      "Opções da validação:\n{}\nOpções gerais:\n{}\n"
      "Saída: 0 sem advertências, 1 com advertências, 2 arquivo não validado ou uso incorreto.\n"
      "Ajuda de um comando: quorvvalida COMANDO --help\n",
      quorv::kVersao, kUso, kOpcoesValidacao, kOpcoesGerais);
}

void AjudaDoComando(const std::string& comando) {
  if (comando == "web") {
    fmt::print(
        "Uso: quorvvalida web ARQUIVO -r RETORNO [-d DIR] [--tipo P|F] [--tipo-arquivo TEXTO]\n"
        "                     [--programa-chamador TEXTO]\n\n"
        "Valida o arquivo como o sistema web da Fazenda: sem advertências, nada é escrito; com\n"
        "advertências, o arquivo de retorno DIR/RETORNO é escrito para leitura e\n"
        "ADVERTENCIAS.TXT é apagado.\n\n"
        "  -r, --retorno RETORNO        nome do arquivo de retorno, dentro de DIR\n"
        "  -d, --diretorio DIR          diretório de trabalho (padrão: o atual)\n"
        "  --tipo P|F                   P notas, F fichas, exatamente como escrito; sem ele o "
        "tipo\n"
        "                               vem da primeira linha do arquivo\n"
        "  --tipo-arquivo TEXTO         \"RET\" para fichas de retorno\n"
        "  --programa-chamador TEXTO    programa que chama a validação\n\n"
        "Saída: 0 quando a fachada responde verdadeiro (sem advertências), 1 quando falso,\n"
        "2 quando o arquivo ou o diretório não existe, o tipo não é identificado ou o uso\n"
        "é incorreto.\n");
  } else if (comando == "mensagem") {
    fmt::print(
        "Uso: quorvvalida mensagem notas|fichas CODIGO\n\n"
        "Mostra o texto do catálogo para o código de advertência.\n");
  } else if (comando == "advertencias") {
    fmt::print(
        "Uso: quorvvalida advertencias notas|fichas ARQUIVO\n\n"
        "Lista um arquivo de advertências (separado por #) registro a registro: linha,\n"
        "tipo de registro, nota ou solicitação e descrição.\n");
  } else {
    fmt::print(
        "Uso: quorvvalida {} ARQUIVO [-d DIR] [opções]\n\nValida um arquivo de {}.\n\n"
        "Opções da validação:\n{}\nOpções gerais:\n{}",
        comando, comando == "notas" ? "notas fiscais de produtor" : "ficha cadastral",
        kOpcoesValidacao, kOpcoesGerais);
  }
}

// A usage error: a short message, the usage lines, exit code 2.
int ErroDeUso(const std::string& mensagem) {
  quorv::ferramenta::Erro(mensagem);
  fmt::print(stderr, "{}Use 'quorvvalida --help' para ver todas as opções.\n", kUso);
  return quorv::ferramenta::kNaoValidado;
}

// The argument parser's messages, in the tool's language.
std::string Traduz(const CLI::ParseError& erro) {
  static const std::pair<std::regex, const char*> kTraducoes[] = {
      {std::regex("The following arguments? (was|were) not expected: (.*)"),
       "argumento não esperado: $2"},
      {std::regex("(.*): 1 required .* missing"), "falta o valor de $1"},
      {std::regex("Could not convert: (.*) = (.*)"), "valor inválido para $1: $2"},
      {std::regex("(.*) is required"), "falta $1"},
      {std::regex("(.*) requires (\\d+) arguments?, but received (\\d+)"),
       "$1 espera $2 valor(es)"},
  };
  const std::string texto = erro.what();
  for (const auto& [padrao, traducao] : kTraducoes) {
    if (std::regex_search(texto, padrao)) return std::regex_replace(texto, padrao, traducao);
  }
  return "uso incorreto: " + texto;
}

// The options of Valida_Dados and Valida_Fichas; the first is the working directory.
std::vector<CLI::Option*> OpcoesDeValidacao(CLI::App& comando,
                                            quorv::ferramenta::OpcoesValidacao& opcoes) {
  return {comando.add_option("-d,--diretorio", opcoes.diretorio),
          comando.add_option("--chave-remessa", opcoes.chaveRemessa),
          comando.add_option("--chave-processamento", opcoes.chaveProcessamento),
          comando.add_option("--origem", opcoes.origem),
          comando.add_option("--servidor", opcoes.servidor),
          comando.add_option("--separador", opcoes.separador)};
}

// What was written before or after a command that the command does not take: it reached the
// program's own options, where it would be silently lost. Empty when there is nothing.
std::string ForaDoComando(const std::string& comando, const CLI::Option& arquivoSolto,
                          const std::string& arquivo,
                          const std::vector<CLI::Option*>& opcoesDeValidacao) {
  if (arquivoSolto.count() > 0) return "argumento não esperado: " + arquivo;
  if (comando == "notas" || comando == "fichas") return {};
  for (const CLI::Option* opcao : opcoesDeValidacao) {
    // The web facade takes a working directory too.
    if (comando == "web" && opcao == opcoesDeValidacao.front()) continue;
    if (opcao->count() > 0) {
      return "a opção " + opcao->get_name() + " não vale para o comando " + comando;
    }
  }
  return {};
}

std::optional<Tipo> TipoDoNome(const std::string& nome) {
  if (nome == "notas") return Tipo::kNotas;
  if (nome == "fichas") return Tipo::kFichas;
  return std::nullopt;
}

int Executa(int argc, char** argv) {
  CLI::App app("", "quorvvalida");
  app.set_help_flag();
  app.allow_windows_style_options(false);

  bool ajuda = false;
  bool versao = false;
  quorv::ferramenta::OpcoesGerais gerais;
  std::string hoje;
  std::string inscricaoLib;
  bool semVerificarInscricao = false;
  app.add_flag("-h,--help", ajuda);
  app.add_flag("--version", versao);
  app.add_flag("--json", gerais.json);
  app.add_flag("-q,--quieto", gerais.quieto);
  app.add_option("--limite", gerais.limite);
  app.add_option("--hoje", hoje);
  app.add_option("--inscricao-lib", inscricaoLib);
  app.add_flag("--sem-verificar-inscricao", semVerificarInscricao);

  quorv::ferramenta::OpcoesValidacao validacao;
  // The file given without a command; a command takes its own.
  std::string arquivoSolto;
  const CLI::Option* opcaoArquivoSolto = app.add_option("ARQUIVO", arquivoSolto);
  const std::vector<CLI::Option*> opcoesDeValidacao = OpcoesDeValidacao(app, validacao);

  std::map<std::string, CLI::App*> comandos;
  for (const char* nome : {"notas", "fichas"}) {
    CLI::App* comando = app.add_subcommand(nome);
    comando->add_option("ARQUIVO", validacao.arquivo);
    OpcoesDeValidacao(*comando, validacao);
    comandos[nome] = comando;
  }
  quorv::ferramenta::OpcoesWeb web;
  CLI::App* comandoWeb = app.add_subcommand("web");
  comandoWeb->add_option("ARQUIVO", web.arquivo);
  comandoWeb->add_option("-r,--retorno", web.retorno);
  comandoWeb->add_option("-d,--diretorio", validacao.diretorio);
  comandoWeb->add_option("--tipo", web.tipo);
  comandoWeb->add_option("--tipo-arquivo", web.tipoArquivo);
  comandoWeb->add_option("--programa-chamador", web.programaChamador);
  comandos["web"] = comandoWeb;
  // "mensagem notas 77": the kind is a subcommand of its own under each command, so that
  // "notas" and "fichas" there are not taken for the validating commands of the same names.
  std::string argumento;
  std::map<std::string, CLI::App*> tipos;
  for (const char* nome : {"mensagem", "advertencias"}) {
    CLI::App* comando = app.add_subcommand(nome);
    comandos[nome] = comando;
    for (const char* tipo : {"notas", "fichas"}) {
      CLI::App* doTipo = comando->add_subcommand(tipo);
      doTipo->add_option("ARGUMENTO", argumento);
      doTipo->fallthrough();
      tipos[std::string(nome) + " " + tipo] = doTipo;
    }
  }
  for (auto& [nome, comando] : comandos)
    comando->fallthrough();

  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& erro) {
    return ErroDeUso(Traduz(erro));
  }

  std::string escolhido;
  for (const auto& [nome, comando] : comandos) {
    if (comando->parsed()) escolhido = nome;
  }
  if (versao) {
    fmt::print("quorvvalida {}\n", quorv::kVersao);
    return 0;
  }
  if (ajuda) {
    escolhido.empty() ? AjudaGeral() : AjudaDoComando(escolhido);
    return 0;
  }
  if (escolhido.empty()) {
    validacao.arquivo = arquivoSolto;
  } else if (const std::string erro =
                 ForaDoComando(escolhido, *opcaoArquivoSolto, arquivoSolto, opcoesDeValidacao);
             !erro.empty()) {
    return ErroDeUso(erro);
  }

  if (!hoje.empty()) {
    const double data = quorv::ConverteData(hoje);
    if (hoje.size() != 8 || data <= 0) return ErroDeUso("data inválida em --hoje: " + hoje);
    gerais.hoje = data;
  }
  if (!inscricaoLib.empty() && !quorv::CarregarBibliotecaInscricao(inscricaoLib)) {
    quorv::ferramenta::Erro("não foi possível carregar a biblioteca de inscrição estadual " +
                            inscricaoLib);
    return quorv::ferramenta::kNaoValidado;
  }
  if (semVerificarInscricao) {
    quorv::DefinirVerificadorInscricao(
        [](const std::string&, const std::string&) { return static_cast<int16_t>(0); });
  }

  if (escolhido == "web") {
    if (web.arquivo.empty()) return ErroDeUso("falta o ARQUIVO a validar");
    if (web.retorno.empty()) return ErroDeUso("falta o nome do arquivo de retorno (-r RETORNO)");
    web.diretorio = validacao.diretorio;
    return quorv::ferramenta::ValidaWeb(web, gerais);
  }
  if (escolhido == "mensagem" || escolhido == "advertencias") {
    std::optional<Tipo> tipo;
    for (const char* nome : {"notas", "fichas"}) {
      if (tipos[escolhido + " " + nome]->parsed()) tipo = TipoDoNome(nome);
    }
    if (!tipo) return ErroDeUso("informe notas ou fichas depois de " + escolhido);
    if (argumento.empty()) {
      return ErroDeUso(escolhido == "mensagem" ? "falta o CODIGO" : "falta o ARQUIVO");
    }
    return escolhido == "mensagem" ? quorv::ferramenta::MostraMensagem(*tipo, argumento, gerais)
                                   : quorv::ferramenta::ListaAdvertencias(*tipo, argumento, gerais);
  }
  if (validacao.arquivo.empty()) return ErroDeUso("falta o ARQUIVO a validar");
  if (validacao.separador.empty()) return ErroDeUso("o separador não pode ser vazio");
  return quorv::ferramenta::ValidaArquivo(TipoDoNome(escolhido), validacao, gerais);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    // The service has options of its own and takes the rest of the command line.
    if (argc > 1 && std::string(argv[1]) == "servir") {
#ifdef QUORVVALIDA_SERVICO
      return quorv::servico::Servir(argc - 1, argv + 1);
#else
      quorv::ferramenta::Erro("o serviço HTTP não faz parte desta construção");
      return quorv::ferramenta::kNaoValidado;
#endif
    }
    return Executa(argc, argv);
  } catch (const std::exception& erro) {
    quorv::ferramenta::Erro(std::string("erro inesperado: ") + erro.what());
    return quorv::ferramenta::kNaoValidado;
  }
}
