#include "frenchprose.hpp"

namespace orane::bench
{
namespace
{

const char* const PEOPLE[] = {
    "La concierge du 12",        "Le vieux notaire",           "Le jeune clerc",         "La veuve Castagne",
    "Le patron du café",         "Un cocher de fiacre",        "La fille du pharmacien", "Le commissaire Bréval",
    "Un docker du quai",         "La cuisinière de l'hôtel",   "Le garçon d'étage",      "Un marchand de journaux",
    "L'organiste de Saint-Roch", "La modiste de la rue Lepic", "Le chauffeur du préfet", "Un ancien bagnard",
    "La gouvernante des Aubry",  "Le médecin légiste",
};

const char* const DEEDS[] = {
    "a vu",
    "cachait",
    "a brûlé",
    "a perdu",
    "gardait sous clé",
    "a vendu en secret",
    "jure avoir trouvé",
    "a rapporté",
    "surveillait",
    "a déchiré",
    "transportait",
    "a reconnu",
};

const char* const THINGS[] = {
    "une lettre froissée",
    "un revolver rouillé",
    "la clé de la cave",
    "un carnet taché d'encre",
    "un billet de train pour Lyon",
    "une montre arrêtée à minuit",
    "un gant de cuir noir",
    "une photographie déchirée",
    "un flacon sans étiquette",
    "un manteau trempé de pluie",
    "une boîte d'allumettes du Lapin Agile",
    "un registre d'hôtel",
    "une bague gravée",
    "un mouchoir brodé",
    "une valise à double fond",
};

const char* const PLACES[] = {
    "près du canal Saint-Martin",  "dans l'arrière-boutique",   "sous la pluie de la rue Mouffetard",
    "au dernier étage de l'hôtel", "derrière la gare de l'Est", "dans la crypte de l'église",
    "au fond de la cour pavée",    "sur le quai désert",        "dans le bureau du notaire",
    "à l'entrée du cimetière",     "au comptoir du café",       "dans la cave humide",
};

const char* const TIMES[] = {
    "la veille du meurtre", "peu après minuit",       "dimanche dernier", "à l'aube",
    "pendant l'orage",      "le soir du bal",         "avant la messe",   "au moment du dernier train",
    "trois jours plus tôt", "à la tombée de la nuit",
};

const char* const QUESTIONS[] = {
    "Pensez-vous que ce détail compte vraiment", "Qui d'autre pouvait le savoir",
    "Pourquoi personne n'en a parlé jusqu'ici",  "Avez-vous vérifié cette histoire",
    "Est-ce une coïncidence, selon vous",        "Que faisait donc la police pendant ce temps",
    "Faut-il vraiment croire ce témoin",         "Le justicier savait-il déjà tout cela",
};

const char* const MOODS[] = {
    "Je n'aime pas cela du tout.",       "Soyez prudente, je vous prie.",   "Tout cela sent le mensonge.",
    "Nous approchons de quelque chose.", "Je relis vos notes chaque soir.", "La ville entière se tait.",
    "Gardez ce carnet sur vous.",        "Méfiez-vous des évidences.",
};

const char* const ACTIONS[] = {
    "Interroger", "Suivre", "Surveiller", "Questionner", "Rencontrer", "Faire parler", "Observer", "Retrouver",
};

const char* const SEARCHES[] = {
    "Fouiller", "Examiner", "Chercher", "Inspecter", "Faire analyser", "Mettre sous scellés",
};

const char* const INTENTS[] = {
    "sans tarder",
    "dès ce soir",
    "discrètement",
    "avant qu'il ne soit trop tard",
    "demain matin",
    "avec l'aide d'un agent",
    "sans rien dire à personne",
};

std::string lowerFirst(std::string text)
{
    // Every entry starts with an ASCII capital, so one byte is enough.
    if (!text.empty() && text[0] >= 'A' && text[0] <= 'Z')
        text[0] = static_cast<char>(text[0] - 'A' + 'a');
    return text;
}

} // namespace

FrenchProse::FrenchProse(std::uint32_t seed)
    : random_(seed)
{}

template <std::size_t N>
const char* FrenchProse::pick(const char* const (&words)[N])
{
    return words[random_() % N];
}

std::string FrenchProse::observation()
{
    std::string sentence = pick(PEOPLE);
    sentence += ' ';
    sentence += pick(DEEDS);
    sentence += ' ';
    sentence += pick(THINGS);
    sentence += ' ';
    sentence += random_() % 2 == 0 ? pick(PLACES) : pick(TIMES);
    sentence += '.';
    return sentence;
}

std::string FrenchProse::remark()
{
    std::string sentence = pick(QUESTIONS);
    sentence += " ? ";
    sentence += pick(MOODS);
    return sentence;
}

FrenchProse::Answer FrenchProse::answer()
{
    Answer answer;
    if (random_() % 2 == 0) {
        const std::string person = lowerFirst(pick(PEOPLE));
        answer.label = std::string(pick(ACTIONS)) + ' ' + person;
        answer.text = "Je vais " + lowerFirst(answer.label) + ' ' + pick(INTENTS) + '.';
    } else {
        const std::string thing = pick(THINGS);
        answer.label = std::string(pick(SEARCHES)) + ' ' + thing;
        answer.text = "Il faut " + lowerFirst(answer.label) + '.';
    }
    return answer;
}

} // namespace orane::bench
