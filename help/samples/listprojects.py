from varnel import app

for project in app.projects:
    print(project.name, project.currentConfiguration)
