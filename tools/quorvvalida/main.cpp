// quorvvalida: validates producer-invoice and registration-form files from the command line.
#include <algorithm>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include <fmt/core.h>
#include <CLI/CLI.hpp>

#include "argumentos.hpp"
#include "codigos_saida.hpp"
#include "comandos.hpp"
#include "quorvvalida/quorvvalida.hpp"
#include "valores.hpp"
#ifdef QUORVVALIDA_SERVICO
#include "servir/servir.hpp"
#endif

namespace {

using quorv::ferramenta::kAceito;
using quorv::ferramenta::kErroInterno;
using quorv::ferramenta::kFalhaEntradaSaida;
using quorv::ferramenta::kUsoIncorreto;
using quorv::ferramenta::Relator;
using quorv::ferramenta::Tipo;

constexpr const char* kUso =
    "Uso: quorvvalida [opções] ARQUIVO...\n"
    "     quorvvalida notas|fichas|auto ARQUIVO... [-d DIR] [-j N] [--recursivo] [opções]\n"
    "     quorvvalida web ARQUIVO -r RETORNO [-d DIR] [--tipo P|F]\n"
    "     quorvvalida mensagem notas|fichas CODIGO\n"
    "     quorvvalida advertencias notas|fichas ARQUIVO\n"
    "     quorvvalida servir [--endereco IP] [--porta P] [opções]   (serviço HTTP; servir --help)";

constexpr std::uint64_t kMaiorLimite = 1000000000;
constexpr std::uint64_t kMaisTarefas = 256;

// The exit codes, as --help ends.
std::string TabelaDeSaida() {
  std::string tabela = "Códigos de saída:\n";
  for (const auto& codigo : quorv::ferramenta::kCodigosSaida) {
    tabela += fmt::format("  {}  {}\n", codigo.codigo, codigo.descricao);
  }
  return tabela;
}

CLI::Validator ValidadorChave() {
  return CLI::Validator(
      [](std::string& texto) -> std::string {
        return quorv::ferramenta::LeChave(texto) ? std::string()
                                                 : quorv::ferramenta::ChaveInvalida(texto);
      },
      "N");
}

CLI::Validator ValidadorData() {
  return CLI::Validator(
      [](std::string& texto) -> std::string {
        return quorv::ferramenta::LeData(texto) ? std::string()
                                                : quorv::ferramenta::DataInvalida(texto);
      },
      "AAAAMMDD");
}

CLI::Validator ValidadorSeparador() {
  return CLI::Validator(
      [](std::string& texto) -> std::string {
        return quorv::ferramenta::SeparadorValido(texto) ? std::string()
                                                         : quorv::ferramenta::SeparadorInvalido();
      },
      "TEXTO");
}

CLI::Validator ValidadorCodigo() {
  return CLI::Validator(
      [](std::string& texto) -> std::string {
        return quorv::ferramenta::LeCodigo(texto) ? std::string()
                                                  : quorv::ferramenta::CodigoInvalido(texto);
      },
      "CODIGO");
}

// The options of Valida_Dados and Valida_Fichas and of a batch, in their help groups; the first
// is the working directory.
std::vector<CLI::Option*> OpcoesDeValidacao(
    CLI::App& comando, quorv::ferramenta::OpcoesValidacao& opcoes, std::string& chaveRemessa,
    std::string& chaveProcessamento, quorv::ferramenta::OpcoesLote& lote, std::string& tarefas) {
  const char* grupo = "Opções da validação";
  return {
      comando
          .add_option("-d,--diretorio", opcoes.diretorio,
                      "diretório de trabalho, onde fica ADVERTENCIAS.TXT (padrão: o atual); com "
                      "vários arquivos, cada um tem nele uma pasta sua, NN-NOME")
          ->option_text("DIR")
          ->group(grupo),
      comando
          .add_option("--chave-remessa", chaveRemessa,
                      "chave da remessa gravada em cada advertência (padrão 0)")
          ->check(ValidadorChave())
          ->option_text("N")
          ->group(grupo),
      comando
          .add_option("--chave-processamento", chaveProcessamento,
                      "chave do processamento (padrão 0)")
          ->check(ValidadorChave())
          ->option_text("N")
          ->group(grupo),
      comando
          .add_option("--origem", opcoes.origem,
                      "origem da chamada; \"A0\" só conta os registros dos grupos de notas")
          ->option_text("TEXTO")
          ->group(grupo),
      comando
          .add_option("--servidor", opcoes.servidor,
                      "nome do servidor; \"TARNWEB\" dispensa as verificações de campos das "
                      "fichas")
          ->option_text("TEXTO")
          ->group(grupo),
      comando
          .add_option("--separador", opcoes.separador,
                      "separador dos campos de ADVERTENCIAS.TXT (padrão #)")
          ->check(ValidadorSeparador())
          ->option_text("TEXTO")
          ->group(grupo),
      comando
          .add_option("-j,--tarefas", tarefas,
                      "quantos arquivos validar ao mesmo tempo (padrão: um por núcleo)")
          ->check(quorv::ferramenta::ValidadorInteiro(1, kMaisTarefas))
          ->option_text("N")
          ->group(grupo),
      comando
          .add_flag("--recursivo", lote.recursivo,
                    "valida os arquivos dos diretórios dados e de todos os seus subdiretórios")
          ->group(grupo),
  };
}

// What was written before or after a command that the command does not take: it reached the
// program's own options, where it would be silently lost. Empty when there is nothing.
std::string ForaDoComando(const std::string& comando, const CLI::Option& arquivosSoltos,
                          const std::vector<CLI::Option*>& opcoesDeValidacao) {
  if (arquivosSoltos.count() > 0) {
    return "argumento não esperado: " + arquivosSoltos.results().front();
  }
  if (comando == "notas" || comando == "fichas" || comando == "auto") return {};
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

CLI::App* Comando(CLI::App& pai, const char* nome, const char* descricao, const std::string& uso,
                  const char* grupo = "Comandos") {
  CLI::App* comando = pai.add_subcommand(nome, descricao);
  comando->formatter(std::make_shared<quorv::ferramenta::FormatadorPortugues>(uso));
  comando->option_defaults()->group("Opções");
  comando->group(grupo);
  comando->fallthrough();
  return comando;
}

int Executa(int argc, char** argv) {
  const std::vector<std::string> palavras(argv + 1, argv + argc);
  CLI::App app(
      quorv::ferramenta::Quebra(
          fmt::format("quorvvalida {}: valida arquivos de notas fiscais de produtor (linhas de 160 "
                      "caracteres) e de ficha cadastral (linhas de 260 caracteres). Cada problema "
                      "vira uma linha de ADVERTENCIAS.TXT no diretório de trabalho.",
                      quorv::kVersao),
          quorv::ferramenta::FormatadorPortugues::kLargura),
      "quorvvalida");
  app.formatter(std::make_shared<quorv::ferramenta::FormatadorPortugues>(kUso));
  quorv::ferramenta::UsaMensagensEmPortugues(app, palavras);
  app.set_help_flag();
  app.allow_windows_style_options(false);
  app.footer("\n" + TabelaDeSaida() +
             "\nAjuda de um comando: quorvvalida COMANDO --help. Os formatos JSON estão descritos "
             "nos esquemas de share/quorvvalida/esquemas.");

  bool ajuda = false;
  bool versao = false;
  quorv::ferramenta::OpcoesGerais gerais;
  std::string limite;
  std::string hoje;
  std::string inscricaoLib;
  bool semVerificarInscricao = false;
  const char* grupoGeral = "Opções gerais";
  CLI::Option* opcaoJson =
      app.add_flag("--json", gerais.json,
                   "um objeto JSON (formato 1) na saída em vez do resumo; com vários arquivos, "
                   "um por linha e então o resumo do lote")
          ->group(grupoGeral);
  app.add_flag("-q,--quieto", gerais.quieto,
               "não mostra progresso nem resumos; erros e avisos sobre o ambiente continuam")
      ->group(grupoGeral);
  app.add_option("--limite", limite, "no máximo N advertências na tabela (padrão: todas)")
      ->check(quorv::ferramenta::ValidadorInteiro(1, kMaiorLimite))
      ->option_text("N")
      ->group(grupoGeral);
  app.add_option("--hoje", hoje, "a data que vale como hoje nas verificações de datas")
      ->check(ValidadorData())
      ->option_text("AAAAMMDD")
      ->group(grupoGeral);
  app.add_option("--inscricao-lib", inscricaoLib,
                 "carrega a biblioteca de inscrição estadual deste arquivo")
      ->option_text("CAMINHO")
      ->group(grupoGeral);
  app.add_flag("--sem-verificar-inscricao", semVerificarInscricao,
               "aceita toda inscrição estadual sem consultar a biblioteca")
      ->group(grupoGeral);
  app.add_flag("-h,--help", ajuda, "mostra esta ajuda")->group(grupoGeral);
  app.add_flag("--version", versao, "mostra a versão")->group(grupoGeral);

  quorv::ferramenta::OpcoesValidacao validacao;
  quorv::ferramenta::OpcoesLote lote;
  std::string chaveRemessa;
  std::string chaveProcessamento;
  std::string tarefas;
  // The files given without a command; a command takes its own.
  std::vector<std::string> arquivosSoltos;
  const CLI::Option* opcaoArquivosSoltos =
      app.add_option("ARQUIVO", arquivosSoltos,
                     "arquivos a validar, cada um do tipo que a primeira linha diz (160 ou 260 "
                     "caracteres); - "
                     "lê da entrada padrão")
          ->type_name("");
  const std::vector<CLI::Option*> opcoesDeValidacao =
      OpcoesDeValidacao(app, validacao, chaveRemessa, chaveProcessamento, lote, tarefas);

  std::map<std::string, CLI::App*> comandos;
  for (const auto& [nome, descricao] : std::vector<std::pair<const char*, const char*>>{
           {"notas", "valida arquivos de notas fiscais de produtor"},
           {"fichas", "valida arquivos de ficha cadastral"},
           {"auto", "valida arquivos do tipo que a primeira linha de cada um diz"}}) {
    CLI::App* comando =
        Comando(app, nome, descricao,
                fmt::format("Uso: quorvvalida {} ARQUIVO... [-d DIR] [-j N] [--recursivo] "
                            "[opções]\n\nOpções gerais (--json, -q, --hoje...): quorvvalida "
                            "--help",
                            nome));
    comando->add_option("ARQUIVO", lote.arquivos, "arquivos a validar; - lê da entrada padrão")
        ->type_name("");
    OpcoesDeValidacao(*comando, validacao, chaveRemessa, chaveProcessamento, lote, tarefas);
    comando->footer("\n" + TabelaDeSaida());
    comandos[nome] = comando;
  }
  quorv::ferramenta::OpcoesWeb web;
  CLI::App* comandoWeb = Comando(
      app, "web", "valida como o sistema web da Fazenda e escreve o arquivo de retorno",
      "Uso: quorvvalida web ARQUIVO -r RETORNO [-d DIR] [--tipo P|F] [--tipo-arquivo TEXTO]\n"
      "                     [--programa-chamador TEXTO]\n\n"
      "Valida o arquivo como o sistema web da Fazenda: sem advertências, nada é escrito; com\n"
      "advertências, o arquivo de retorno é escrito para leitura e ADVERTENCIAS.TXT é apagado.\n"
      "Sem --programa-chamador, a fachada usa a origem padrão do sistema web: um arquivo de "
      "notas\n"
      "validado com a origem \"A0\" só tem os registros dos grupos contados (moldura, cabeçalho "
      "e\n"
      "trailer continuam verificados), e um arquivo de fichas sem programa chamador (e sem\n"
      "--tipo-arquivo RET) só passa pelas regras de estrutura, sem as verificações de campos.");
  comandoWeb->add_option("ARQUIVO", web.arquivo, "arquivo a validar")->type_name("");
  comandoWeb
      ->add_option("-r,--retorno", web.retorno,
                   "arquivo de retorno: um nome relativo fica dentro de DIR; um caminho absoluto "
                   "vale como está; a pasta deve existir")
      ->option_text("RETORNO");
  comandoWeb
      ->add_option("-d,--diretorio", validacao.diretorio, "diretório de trabalho (padrão: o atual)")
      ->option_text("DIR");
  comandoWeb
      ->add_option("--tipo", web.tipo,
                   "P notas, F fichas, exatamente como escrito (outro valor não valida nada); "
                   "sem ele, o tipo vem da primeira linha do arquivo")
      ->option_text("P|F");
  comandoWeb
      ->add_option("--tipo-arquivo", web.tipoArquivo,
                   "\"RET\" valida fichas de retorno por inteiro")
      ->option_text("TEXTO");
  comandoWeb
      ->add_option("--programa-chamador", web.programaChamador,
                   "programa que chama a validação: notas são verificadas por inteiro com ele "
                   "como origem, e fichas passam por todas as verificações de campos")
      ->option_text("TEXTO");
  comandoWeb->footer(
      "\nCódigos de saída: 0 quando a fachada responde verdadeiro (sem advertências), 1 quando\n"
      "falso, 2 uso incorreto ou tipo não identificado, 3 arquivo, diretório ou pasta do retorno\n"
      "ausente, ou falha de gravação, 4 erro interno.");
  comandos["web"] = comandoWeb;

  // "mensagem notas 77": the kind is a command of its own under each command, so that "notas"
  // and "fichas" there are not taken for the validating commands of the same names.
  std::string argumento;
  std::map<std::string, CLI::App*> tipos;
  for (const auto& [nome, descricao] : std::vector<std::pair<const char*, const char*>>{
           {"mensagem", "mostra o texto do catálogo para um código de advertência"},
           {"advertencias", "lista um arquivo de advertências registro a registro"}}) {
    const bool mensagem = std::string(nome) == "mensagem";
    CLI::App* comando = Comando(
        app, nome, descricao,
        fmt::format("Uso: quorvvalida {} notas|fichas {}", nome, mensagem ? "CODIGO" : "ARQUIVO"));
    comando->footer(
        "\n" + quorv::ferramenta::Quebra(
                   mensagem ? "Saída: 0 código do catálogo, 1 código que o catálogo não tem (o "
                              "texto é a resposta padrão do catálogo), 2 uso incorreto."
                            : "Lê o arquivo separado por #, como a fachada web o lê. Saída: 0 "
                              "listado, 2 uso incorreto, 3 arquivo ausente ou que não é um "
                              "arquivo de advertências do tipo pedido.",
                   quorv::ferramenta::FormatadorPortugues::kLargura));
    comandos[nome] = comando;
    for (const char* tipo : {"notas", "fichas"}) {
      CLI::App* doTipo = Comando(
          *comando, tipo,
          std::string(tipo) == "notas" ? "de notas fiscais de produtor" : "de ficha cadastral",
          fmt::format("Uso: quorvvalida {} {} {}", nome, tipo, mensagem ? "CODIGO" : "ARQUIVO"),
          "Tipos");
      CLI::Option* opcao =
          doTipo->add_option(mensagem ? "CODIGO" : "ARQUIVO", argumento,
                             mensagem ? "código de advertência" : "arquivo de advertências");
      opcao->type_name("");
      if (mensagem) opcao->check(ValidadorCodigo());
      tipos[std::string(nome) + " " + tipo] = doTipo;
    }
  }

#ifdef QUORVVALIDA_SERVICO
  // The service is started before this parser is reached (main), and reads its own options; it
  // stands here so that the help lists it with the other commands.
  Comando(app, "servir", "serviço HTTP de validação; suas opções: quorvvalida servir --help",
          "Uso: quorvvalida servir [opções]");
#endif

  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& erro) {
    const std::string mensagem = quorv::ferramenta::MensagemDoErro(app, erro);
    gerais.json = opcaoJson->count() > 0;
    Relator relator(gerais);
    return relator.Encerra(relator.Falha(
        {"uso", gerais.json ? mensagem : mensagem + "; veja 'quorvvalida --help'"}, kUsoIncorreto));
  }

  // The deepest command given: "mensagem notas" is "mensagem" for the checks below.
  std::string escolhido;
  const CLI::App* maisFundo = &app;
  for (const auto& [nome, comando] : comandos) {
    if (comando->parsed()) {
      escolhido = nome;
      maisFundo = comando;
    }
  }
  for (const auto& [nome, doTipo] : tipos) {
    if (doTipo->parsed()) maisFundo = doTipo;
  }
  if (ajuda) {
    fmt::print("{}", maisFundo->help());
    return kAceito;
  }
  if (!limite.empty()) gerais.limite = *quorv::ferramenta::InteiroEntre(limite, 1, kMaiorLimite);
  if (!hoje.empty()) gerais.hoje = quorv::ferramenta::LeData(hoje);
  if (!chaveRemessa.empty()) validacao.chaveRemessa = *quorv::ferramenta::LeChave(chaveRemessa);
  if (!chaveProcessamento.empty()) {
    validacao.chaveProcessamento = *quorv::ferramenta::LeChave(chaveProcessamento);
  }
  lote.tarefas = std::max(1u, std::thread::hardware_concurrency());
  if (!tarefas.empty()) {
    lote.tarefas =
        static_cast<unsigned>(*quorv::ferramenta::InteiroEntre(tarefas, 1, kMaisTarefas));
  }

  Relator relator(gerais);
  if (versao) {
    if (gerais.json) {
      quorv::ferramenta::json_v1::EscreveVersao(relator.Escritor(), quorv::kVersao);
    } else {
      fmt::print("quorvvalida {}\n", quorv::kVersao);
    }
    return relator.Encerra(kAceito);
  }
  const auto erroDeUso = [&relator](const std::string& mensagem) {
    return relator.Encerra(relator.Falha(
        {"uso", relator.Gerais().json ? mensagem : mensagem + "; veja 'quorvvalida --help'"},
        kUsoIncorreto));
  };
  if (escolhido.empty()) {
    lote.arquivos = arquivosSoltos;
  } else if (const std::string erro =
                 ForaDoComando(escolhido, *opcaoArquivosSoltos, opcoesDeValidacao);
             !erro.empty()) {
    return erroDeUso(erro);
  }

  if (!inscricaoLib.empty() && !quorv::CarregarBibliotecaInscricao(inscricaoLib)) {
    return relator.Encerra(relator.Falha(
        {"biblioteca_inscricao",
         "não foi possível carregar a biblioteca de inscrição estadual: " + inscricaoLib},
        kFalhaEntradaSaida));
  }
  if (semVerificarInscricao) {
    quorv::DefinirVerificadorInscricao(
        [](const std::string&, const std::string&) { return static_cast<int16_t>(0); });
  }

  try {
    if (escolhido == "web") {
      if (web.arquivo.empty()) return erroDeUso("falta o ARQUIVO a validar");
      if (web.retorno.empty()) {
        return erroDeUso("falta o nome do arquivo de retorno (-r RETORNO)");
      }
      web.diretorio = validacao.diretorio;
      return relator.Encerra(quorv::ferramenta::ValidaWeb(web, relator));
    }
    if (escolhido == "mensagem" || escolhido == "advertencias") {
      std::optional<Tipo> tipo;
      for (const char* nome : {"notas", "fichas"}) {
        if (tipos[escolhido + " " + nome]->parsed()) tipo = TipoDoNome(nome);
      }
      if (!tipo) return erroDeUso("informe notas ou fichas depois de " + escolhido);
      if (argumento.empty()) {
        return erroDeUso(escolhido == "mensagem" ? "falta o CODIGO" : "falta o ARQUIVO");
      }
      return relator.Encerra(escolhido == "mensagem"
                                 ? quorv::ferramenta::MostraMensagem(
                                       *tipo, *quorv::ferramenta::LeCodigo(argumento), relator)
                                 : quorv::ferramenta::ListaAdvertencias(*tipo, argumento, relator));
    }
    if (lote.arquivos.empty()) return erroDeUso("falta o ARQUIVO a validar");
    if (std::count(lote.arquivos.begin(), lote.arquivos.end(), "-") > 1) {
      return erroDeUso("a entrada padrão (-) só pode ser lida uma vez");
    }
    return relator.Encerra(
        quorv::ferramenta::ValidaArquivos(TipoDoNome(escolhido), validacao, lote, relator));
  } catch (const std::exception& erro) {
    return relator.Encerra(
        relator.Falha({"interno", std::string("erro interno: ") + erro.what()}, kErroInterno));
  }
}

}  // namespace

int main(int argc, char** argv) {
  try {
    // The service has options of its own and takes the rest of the command line.
    if (argc > 1 && std::string(argv[1]) == "servir") {
#ifdef QUORVVALIDA_SERVICO
      return quorv::servico::Servir(argc - 1, argv + 1);
#else
      fmt::print(stderr, "quorvvalida: o serviço HTTP não faz parte desta construção\n");
      return kUsoIncorreto;
#endif
    }
    return Executa(argc, argv);
  } catch (const std::exception& erro) {
    fmt::print(stderr, "quorvvalida: erro interno: {}\n", erro.what());
    return kErroInterno;
  }
}
